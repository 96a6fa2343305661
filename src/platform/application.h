#pragma once

#include <functional>
#include <memory>
#include <string>

namespace morva {

/// The application; one object, made first thing in main.
class Application {
 public:
  /// Without a display it says so in a line on standard error and ends the program with the exit code 1.
  Application(int& argc, char** argv);
  ~Application();
  /// Handles events until the last window is unloaded; returns the program's exit code.
  int Run();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

/// What the program knows of itself.
struct App {
  static const int Major, Minor, Revision;
  /// The three joined by ".", such as "1.2.34".
  static std::string Version();
  /// The folder that holds the program.
  static std::string Path();
};

/// Ends the program at once: no window gets an unload event.
[[noreturn]] void End();

/// What End does; tests put an exception here.
extern std::function<void()> end_program;

}  // namespace morva
