// Runs a target over files, one after the other: the stand-in for libFuzzer's own main.
//   TARGET FOLDER    over all files of a folder

#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/fuzz/target.h"
#include "tests/support/files.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  int inputs = 0;
  for (const auto& file : std::filesystem::directory_iterator(argv[1])) {
    const std::string bytes = support::ReadFile(file.path());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++inputs;
  }
  std::printf("%d inputs\n", inputs);
  return inputs > 0 ? 0 : 1;
}
