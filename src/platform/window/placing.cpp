#include "platform/window/placing.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/drawing/pixels.h"
#include "platform/window/native_window.h"
#include "platform/window/session.h"

namespace morva {

namespace {

// What the program puts farther to the left or above should not be seen, however large the screen. Twips.
constexpr double kOutOfSight = -9000;

std::optional<QMargins> last_frame;

// The screen that shows most of the place, or is the next one to it.
const QScreen* ScreenFor(const QRect& place) {
  const auto distance = [&place](const QScreen* screen) {
    const QRect shown = screen->geometry().intersected(place);
    return std::pair(-shown.width() * shown.height(), (screen->geometry().center() - place.center()).manhattanLength());
  };
  const auto screens = QGuiApplication::screens();
  return *std::min_element(screens.begin(), screens.end(),
                           [&](const QScreen* a, const QScreen* b) { return distance(a) < distance(b); });
}

QPoint WhollyOn(const QRect& area, const QRect& place) {
  return {std::max(area.left(), std::min(place.left(), area.right() + 1 - place.width())),
          std::max(area.top(), std::min(place.top(), area.bottom() + 1 - place.height()))};
}

// While the window manager is still putting its frame round a window, Qt takes that for smaller than the window.
bool IsFrame(const QMargins& margins) {
  return std::min({margins.left(), margins.top(), margins.right(), margins.bottom()}) >= 0;
}

}  // namespace

Placing::Placing(NativeWindow& window) : window_(window) { window.installEventFilter(this); }

void Placing::MoveTo(QPoint corner, const QRect& around) {
  asked_ = given_ = place_ = corner;
  const bool in_sight = ToTwips(std::min(corner.x(), corner.y())) >= kOutOfSight;
  state_ = in_sight ? State::kPlaced : State::kOutOfSight;
  if (!window_.isWindow()) {
    within_owner_ = QPointF(corner - OwnersInside()) * ToTwips(1);
    KeepWithinOwner();
  } else if (in_sight) {
    const QRect place(corner, OuterSize());
    const QRect screen = ScreenFor(place)->availableGeometry();
    const QPoint shift = around.isNull() ? QPoint() : WhollyOn(screen, around) - around.topLeft();
    given_ = place_ = WhollyOn(screen, place.translated(shift));
    MoveOnScreen(place_);
  }
}

void Placing::MoveOnScreen(QPoint corner) {
  if (!window_.isVisible()) return window_.move(corner);
  // The widget itself is slow to learn of its frame.
  const QMargins known = window_.windowHandle()->frameMargins();
  const QMargins frame = window_.HasTitleBar() && known.isNull() ? Frame().value_or(known) : known;
  window_.windowHandle()->setPosition(corner + QPoint(frame.left(), frame.top()));
}

void Placing::KeepWithinOwner() {
  if (window_.isWindow() || window_.IsDocked() || state_ == State::kNowhere) return;
  const QPoint place(ToPixels(within_owner_.x()), ToPixels(within_owner_.y()));
  window_.move(WhollyOn(window_.parentWidget()->rect(), QRect(place, window_.size())));
}

QPoint Placing::CentredCorner() const {
  QRect place({}, OuterSize());
  place.moveCenter(window_.screen()->availableGeometry().center());
  return place.topLeft();
}

void Placing::CentreOnce() {
  if (window_.Style().start != FormStyle::Start::kCentred || state_ != State::kNowhere) return;
  MoveTo(CentredCorner());
  state_ = State::kCentred;
}

bool Placing::MeetFrame() {
  const QWindow* handle = window_.windowHandle();
  if (!window_.HasTitleBar() || !HasWindowManager() || handle == nullptr) return true;
  const QMargins frame = handle->frameMargins();
  if (!IsFrame(frame) || (frame.isNull() && !HasNoFrame(*handle))) return false;
  const bool guessed_wrong = frame != std::exchange(last_frame, frame);
  if (state_ == State::kCentred && guessed_wrong) MoveTo(CentredCorner());
  if (state_ == State::kCentred) state_ = State::kPlaced;
  return true;
}

std::optional<QMargins> Placing::Frame() { return HasWindowManager() ? last_frame : QMargins(); }

bool Placing::eventFilter(QObject* /*window*/, QEvent* event) {
  const bool moved = event->type() == QEvent::Move && window_.isVisible() && window_.isWindow();
  if (moved) place_ = window_.windowHandle()->framePosition();
  return false;
}

QPoint Placing::Corner() const { return window_.isWindow() ? place_ : OwnersInside() + window_.pos(); }

QPoint Placing::WithinFrame() const {
  if (!window_.isWindow() || window_.windowHandle() == nullptr) return {};
  const QMargins frame = window_.windowHandle()->frameMargins();
  return {frame.left(), frame.top()};
}

// By where the owner says that it stands, right or wrong: places within it are worked out from that.
QPoint Placing::OwnersInside() const { return owner_->Corner() + owner_->WithinFrame(); }

QSize Placing::OuterSize() const {
  if (!window_.HasTitleBar()) return window_.OwnSize();
  const QMargins frame = window_.isVisible() ? window_.windowHandle()->frameMargins() : QMargins(-1, -1, -1, -1);
  return window_.OwnSize().grownBy(IsFrame(frame) ? frame : Frame().value_or(QMargins()));
}

}  // namespace morva
