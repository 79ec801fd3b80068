#pragma once

#include <SQLiteCpp/Exception.h>

namespace morvane {

/// The database is damaged, locked, full, or of another version; `what` says which.
using DatabaseError = SQLite::Exception;

}  // namespace morvane
