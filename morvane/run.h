#pragma once

#include <string>

namespace morvane {

/// One run of the engine: settings, logs, statistics, pages. `directory` holds morvane.cfg, and
/// relative paths in it are taken from there. The result is the program's exit code: 0 when every
/// page was written, 1 when one or the database could not be, or nothing at all (no settings, no
/// usable log and no database, no place for the pages, no memory). Why is a severe message. Where
/// another run is at work on `directory` or on the folder of the pages, this one ends at once
/// with 1.
int Run(const std::string& directory);

}  // namespace morvane
