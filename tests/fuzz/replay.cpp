// Runs a target over files, one after the other: the stand-in for libFuzzer's own main.
//   TARGET FOLDER    over all files of a folder

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/fuzz/target.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  int inputs = 0;
  for (const auto& file : std::filesystem::directory_iterator(argv[1])) {
    std::ifstream stream(file.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++inputs;
  }
  std::printf("%d inputs\n", inputs);
  return inputs > 0 ? 0 : 1;
}
