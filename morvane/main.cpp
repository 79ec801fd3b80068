#include <algorithm>
#include <cstddef>

#include "morvane/program.h"
#include "platform/this_process.h"

int main(int count, char** arguments) {
  platform::OutliveSurroundings();
  const std::span<const char* const> all(arguments, static_cast<std::size_t>(count));
  return morvane::RunProgram(all.subspan(std::min<std::size_t>(1, all.size())));
}
