#pragma once

#include <QMargins>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <functional>
#include <optional>

namespace morva {

class NativeWindow;

/// Where a window stands. Places on the screen, in pixels, are those of the outer corner, frame included.
class Placing : public QObject {
 public:
  explicit Placing(NativeWindow& window);

  /// Where it stands from now on is worked out from where that window stands.
  void BelongTo(const Placing& owner) { owner_ = &owner; }
  /// Puts it there, or as near as it takes to be wholly on the screen, and with it, if there is room, all of `around`.
  /// A place far to the left of the screen or above it is out of sight.
  void MoveTo(QPoint corner, const QRect& around = {});
  /// Puts it in the middle of the screen, unless it has a place.
  void CentreOnce();
  /// Puts it at its place within its owner anew, both of which have another size.
  void KeepWithinOwner();

  QPoint Corner() const;
  /// Where it would be if the screen were large enough for all that it was told.
  QPoint AskedCorner() const { return Corner() == given_ ? asked_ : Corner(); }
  /// The size with the window manager's frame; as long as the window was not seen, with the frame of the last one.
  QSize OuterSize() const;
  /// Offset from the outer corner to what lies within the frame.
  QPoint WithinFrame() const;
  /// Whether it has been put anywhere on the screen.
  bool IsPlaced() const { return state_ == State::kCentred || state_ == State::kPlaced; }
  bool IsOutOfSight() const { return state_ == State::kOutOfSight; }

  /// Whether the frame round the window is known, or there will be none. A window centred with a guessed frame is
  /// centred again with this one.
  bool MeetFrame();
  /// The frame that the window manager draws round a window with a title bar, as last seen.
  static std::optional<QMargins> Frame();

  bool eventFilter(QObject* window, QEvent* event) override;

 private:
  QPoint CentredCorner() const;
  QPoint OwnersInside() const;
  void MoveOnScreen(QPoint corner);

  NativeWindow& window_;
  const Placing* owner_ = nullptr;
  enum class State { kNowhere, kCentred, kPlaced, kOutOfSight } state_ = State::kNowhere;
  QPoint place_;          // as far as it is known
  QPoint asked_, given_;  // by the last MoveTo
  QPointF within_owner_;  // twips
};

}  // namespace morva
