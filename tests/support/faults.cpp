// Stands before the C library: a program that links to this one calls the system by way of it.
#include "tests/support/faults.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace support {
namespace {

std::atomic<int> counted = 0;
std::atomic<bool> armed = false;
Fault wanted;

bool IsIt(Fault::Kind kind, const char* path) {
  const bool counts = armed && (wanted.kind == kind || wanted.kind == Fault::kAny) &&
                      std::strncmp(path, wanted.folder.c_str(), wanted.folder.size()) == 0;
  if (!counts || ++counted != wanted.number) return false;
  if (getenv("FAULT_SAY")) dprintf(1, "fault at %s\n", path);
  errno = wanted.error;
  return true;
}

/// Whether the call on an open file is the one.
bool IsIt(Fault::Kind kind, int file) {
  if (!armed) return false;
  char link[64];
  char path[PATH_MAX] = "";
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
  const int error = errno;
  const ssize_t length = readlink(link, path, sizeof path - 1);
  errno = error;
  return length > 0 && IsIt(kind, path);
}

/// The call that is the one: -1, or the end.
int Fail() {
  if (wanted.error == Fault::kKill) kill(getpid(), SIGKILL);
  return -1;
}

template <class Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, va_list arguments) {
  return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

void Arm(const Fault& fault) {
  armed = false;
  wanted = fault;
  counted = 0;
  armed = true;
}

int CountedCalls() { return counted; }

}  // namespace support

using support::Fail;
using support::Fault;
using support::IsIt;
using support::Next;

extern "C" {

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = support::ModeOf(flags, arguments);
  va_end(arguments);
  static auto* const next = Next<int(const char*, int, ...)>("open");
  return IsIt(Fault::kOpen, path) ? Fail() : next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = support::ModeOf(flags, arguments);
  va_end(arguments);
  return open(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
  static auto* const next = Next<ssize_t(int, const void*, size_t)>("write");
  if (!IsIt(Fault::kWrite, file)) return next(file, bytes, size);
  next(file, bytes, size / 2);
  errno = support::wanted.error;
  return Fail();
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
  static auto* const next = Next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
  if (!IsIt(Fault::kWrite, file)) return next(file, bytes, size, at);
  next(file, bytes, size / 2, at);
  errno = support::wanted.error;
  return Fail();
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t at) {
  return pwrite64(file, bytes, size, at);
}

int fsync(int file) {
  static auto* const next = Next<int(int)>("fsync");
  return IsIt(Fault::kFlush, file) ? Fail() : next(file);
}

int fdatasync(int file) {
  static auto* const next = Next<int(int)>("fdatasync");
  return IsIt(Fault::kFlush, file) ? Fail() : next(file);
}

int rename(const char* from, const char* to) {
  static auto* const next = Next<int(const char*, const char*)>("rename");
  return IsIt(Fault::kRename, to) ? Fail() : next(from, to);
}

int unlink(const char* path) {
  static auto* const next = Next<int(const char*)>("unlink");
  return IsIt(Fault::kRemove, path) ? Fail() : next(path);
}

int close(int file) {
  static auto* const next = Next<int(int)>("close");
  if (!IsIt(Fault::kClose, file)) return next(file);
  if (support::wanted.error == Fault::kKill) return Fail();
  next(file);  // one that fails has closed the file all the same
  errno = support::wanted.error;
  return -1;
}

}  // extern "C"
