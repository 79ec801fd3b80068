// Writes a server log of an imagined server:
//   generate_log SEED HOURS OUT            evenings of play
//   generate_log crowd PLAYERS GAMES OUT   many players and games

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "bench/log_generator.h"

int main(int argc, char** argv) {
  const bool crowd = argc == 5 && argv[1] == std::string_view("crowd");
  if (argc != 4 && !crowd) {
    std::fprintf(stderr,
                 "usage: generate_log SEED HOURS OUT\n"
                 "       generate_log crowd PLAYERS GAMES OUT\n");
    return 2;
  }
  const char* path = argv[argc - 1];
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  const auto write = [&](std::string_view piece) {
    out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
  };
  if (crowd) {
    bench::GenerateCrowdLog(std::strtoull(argv[2], nullptr, 10),
                            std::strtoull(argv[3], nullptr, 10), write);
  } else {
    bench::GenerateLog(std::strtoull(argv[1], nullptr, 10), std::strtod(argv[2], nullptr), write);
  }
  out.close();
  if (!out) std::fprintf(stderr, "generate_log: cannot write %s\n", path);
  return out ? 0 : 1;
}
