#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

namespace morva {

class NativeWindow;
class Placing;

/// Whether a window is seen, what it lies in front of, and when it is the one that the user works in.
class Stacking : public QObject {
 public:
  Stacking(NativeWindow& window, Placing& placing);
  ~Stacking() override;

  /// The windows that are loaded, in the order in which they were.
  static const std::vector<Stacking*>& All();
  /// The main window that is seen; none before there is one.
  static NativeWindow* Main();

  NativeWindow& Window() const { return window_; }
  Placing& Place() const { return placing_; }

  void Show();
  void Hide();
  /// Hides it for good and takes it out of All().
  void Leave();
  /// To be called when the window has been put in sight or out of it.
  void ShowWhereSeen();
  /// Keeps it above all windows, or lets it be covered again. Told to stay on top, it comes forward, whatever it is
  /// told next in the same turn of the event loop.
  void StayOnTop(bool on);
  /// Until it is told otherwise no window stays on top, whatever it is told itself.
  static void LetAllBeCovered(bool be);

  /// Called at each activation with the size that the window manager's frame adds, once that is known.
  static inline std::function<void(QSize frame)> frame_is_known;

  bool eventFilter(QObject* window, QEvent* event) override;

 private:
  static void ActivateEnabled();
  static void LetBeCovered();
  void Appear();
  void Disappear();
  void AwaitActivation();
  void Activated();
  void SettleOnTop();
  void UndoMinimise();

  NativeWindow& window_;
  Placing& placing_;
  enum class State {
    kHidden,
    kShown,    // by the program, but out of sight, or its owner is
    kAwaited,  // seen; the activation is to come
    kActive    // has been the active window
  } state_ = State::kHidden;
  QTimer activation_;
  int looks_left_ = 0;  // for the frame and the activation
  QTimer settling_;
  inline static bool all_covered_ = false;  // by a file dialog
  bool on_top_ = false;
  bool forward_ = false;         // asked to come forward
  QPointer<QWidget> had_focus_;  // in the window that this one is a child of
};

}  // namespace morva
