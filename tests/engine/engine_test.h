#pragma once

#include <functional>
#include <string>

#include "app/frmMain.h"
#include "tests/support/editor_test.h"

namespace engine {

/// A test with an engine of its own: a small script that the test writes in its place.
class EngineTest : public support::EditorTest {
 protected:
  /// Puts a script in the engine's place. "$here" is the program directory in it.
  void WriteEngine(const std::string& commands) const;

  /// The commands of an engine that runs until LetEngineEnd.
  std::string WaitForTest() const;
  void LetEngineEnd() const;

  /// Does something once, in an event of its own, while the window is in the middle of something.
  static void During(app::frmMain& window, app::Activity activity, std::function<void()> action);

  /// Whether this process has a child, running or ended, that it did not clear away.
  static bool HasChildren();
};

}  // namespace engine
