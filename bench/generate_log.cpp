// generate_log SEED HOURS OUT: writes a server log of an imagined server.

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/log_generator.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: generate_log SEED HOURS OUT\n");
    return 2;
  }
  std::ofstream out(argv[3], std::ios::binary | std::ios::trunc);
  bench::GenerateLog(std::strtoull(argv[1], nullptr, 10), std::strtod(argv[2], nullptr),
                     [&](std::string_view piece) {
                       out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
                     });
  out.close();
  if (!out) std::fprintf(stderr, "generate_log: cannot write %s\n", argv[3]);
  return out ? 0 : 1;
}
