#include "morvane/run.h"
#include "platform/paths.h"

int main() { return morvane::Run(platform::ProgramDirectory()); }
