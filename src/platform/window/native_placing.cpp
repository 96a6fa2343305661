#include "platform/window/native_window.h"

#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/window/x_within_wayland.h"
#include "platform/window/zoom.h"

// Where a window stands, how large it is, and whether it is seen.

namespace morva {

namespace {

// A dialog that the window manager draws no frame for has this one of its own, in twips.
constexpr double kOwnFrame = 45;
// What stands farther to the left or above is meant to be out of sight, however large the screen. Twips.
constexpr double kOutOfSight = -9000;
// After this time the window that another one is to stand beside has itself moved where it was told, or never will.
constexpr int kStandingMs = 100;

QSize PixelsOf(QSizeF twips) { return {ToPixels(twips.width()), ToPixels(twips.height())}; }

// From the inside of one window to that of another at its right.
QPoint Beside(const NativeWindow& window, const XPlace& place) {
  return {window.width() + 2 * (place.in_frame.x() - place.shadow), 0};
}

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

// To the left of all screens, or above them, is where the program puts what should not be seen.
bool InSight(const QRect& place) {
  const QPoint corner = place.topLeft() - NativeWindow::screen_origin;
  if (ToTwips(std::min(corner.x(), corner.y())) < kOutOfSight) return false;
  const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
  return place.right() >= screens.left() && place.bottom() >= screens.top();
}

QPoint WhollyOn(const QRect& screen, const QRect& place) {
  return {std::max(screen.left(), std::min(place.left(), screen.right() + 1 - place.width())),
          std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - place.height()))};
}

// What the window manager draws round a window with a title bar, as last seen; nothing where there is none.
std::optional<QMargins>& Frame() {
  static std::optional<QMargins> frame;
  return frame;
}

// While the window manager is still putting its frame round a window, the toolkit takes that for smaller than the
// window.
bool IsFrame(const QMargins& margins) {
  return std::min({margins.left(), margins.top(), margins.right(), margins.bottom()}) >= 0;
}

}  // namespace

bool NativeWindow::NoWindowManager() { return Frame() && Frame()->isNull(); }

void NativeWindow::SizeClient(QSizeF twips) {
  const QSize client = PixelsOf(twips);
  const QSize whole = client + QSize(2 * Edge(), 2 * Edge() + BarHeight());
  switch (style_.frame) {
    case FormStyle::Frame::kSizable:
      setMinimumSize(whole / 3);
      resize(whole);
      break;
    case FormStyle::Frame::kSizableWidth:
      setMinimumSize(ToPixels(style_.scale_width), whole.height());
      setMaximumSize(QWIDGETSIZE_MAX, whole.height());
      resize(whole);
      break;
    default:
      setFixedSize(whole);
  }
  // On the way there the limits alone may have made it another size.
  client_twips_ = twips;
  LayClient();
}

void NativeWindow::LayClient() {
  const int bar = BarHeight();
  if (bar_ != nullptr) bar_->setGeometry(0, 0, width(), bar);
  client_.setGeometry(rect().adjusted(Edge(), Edge() + bar, -Edge(), -Edge()));
}

bool NativeWindow::HasTitleBar() const {
  return isWindow() && style_.title_bar && style_.frame != FormStyle::Frame::kNone;
}

int NativeWindow::Edge() const {
  return style_.frame == FormStyle::Frame::kFixed && !style_.title_bar ? std::max(2, ToPixels(kOwnFrame)) : 0;
}

int NativeWindow::BarHeight() const { return bar_ == nullptr ? 0 : bar_->sizeHint().height(); }

void NativeWindow::Rescale() {
  setFont(ProgramFont());
  if (bar_ != nullptr) bar_->setFont(ProgramFont(9));
  const auto menus = findChildren<QMenu*>();
  for (QMenu* menu : menus) menu->setFont(ProgramFont(9));
  if (!background_name_.empty()) SetBackground(background_name_);
  const bool filling = isMaximized() || isFullScreen();
  filling ? LayClient() : SizeClient(client_twips_);
  events_.Form_Resize();
}

void NativeWindow::resizeEvent(QResizeEvent* /*event*/) {
  LayClient();
  const QSize client = client_.size();
  if (client != PixelsOf(client_twips_)) client_twips_ = {ToTwips(client.width()), ToTwips(client.height())};
  if (!loading) events_.Form_Resize();
}

void NativeWindow::MoveTo(QPoint corner, const QRect& around) {
  placed_ = true;
  centred_ = false;
  asked_ = place_ = corner;
  const QRect place(corner, OuterSize());
  if (!isWindow()) {
    move(WhollyOn(parentWidget()->rect(), QRect(corner - OwnersInside(), size())));
  } else if (InSight(place)) {
    const QRect screen = ScreenFor(place)->availableGeometry();
    const QPoint shift = around.isNull() ? QPoint() : WhollyOn(screen, around) - around.topLeft();
    const QPoint nearest = place_ = WhollyOn(screen, place.translated(shift));
    if (windowType() == Qt::Tool && XWithinWayland()) standing_.start(kStandingMs);
    if (isVisible()) {  // the widget itself is slow to learn of its frame
      const QMargins known = windowHandle()->frameMargins();
      const QMargins frame = HasTitleBar() && known.isNull() ? Frame().value_or(known) : known;
      windowHandle()->setPosition(nearest + QPoint(frame.left(), frame.top()));
    } else {
      move(nearest);
    }
  }
  given_ = place_;
  ShowWhereSeen();
}

void NativeWindow::moveEvent(QMoveEvent* /*event*/) {
  if (isVisible() && isWindow()) place_ = windowHandle()->framePosition();
}

QPoint NativeWindow::Corner() const {
  if (beside_owner_) return Of(parentWidget())->Corner() + QPoint(Of(parentWidget())->OuterSize().width(), 0);
  return isWindow() ? place_ : OwnersInside() + pos();
}

void NativeWindow::MendPlace() {
  if (!isWindow() || windowHandle() == nullptr) return;
  const NativeWindow& tracked = beside_owner_ ? *Of(parentWidget()) : *this;
  const std::optional<XPlace> x = PlaceByX(*tracked.windowHandle());
  if (!x) return;
  windowHandle()->setPosition(x->on_screen + (beside_owner_ ? Beside(tracked, *x) : QPoint()));
  if (!beside_owner_) place_ = windowHandle()->framePosition();
}

// Weston's X server puts windows where it likes, and lets no program move them, but for one that belongs to another and
// is of a kind that never has the keys: that one comes where it is asked to, as seen from its owner, and goes and comes
// forward together with it. So it comes after its owner, and anew for each new place.
void NativeWindow::StandBesideOwner() {
  if (!shown_) return;
  const NativeWindow& owner = *Of(parentWidget());
  const std::optional<XPlace> x = owner.isVisible() ? PlaceByX(*owner.windowHandle()) : std::nullopt;
  if (!x) return standing_.start(kStandingMs);
  beside_owner_ = x->shadow > 0;
  if (!beside_owner_) return ShowWhereSeen();
  hide();
  destroy();
  setGeometry({x->on_screen - x->in_frame + Beside(owner, *x), size()});
  create();
  windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus);
  // The toolkit raises what it takes for a tool window before it shows it, at which the place would be lost.
  const Qt::WindowFlags flags = windowFlags();
  overrideWindowFlags((flags & ~Qt::WindowType_Mask) | Qt::Dialog);
  ShowWhereSeen();
  overrideWindowFlags(flags);
}

QPoint NativeWindow::WithinFrame() const {
  if (!isWindow() || windowHandle() == nullptr) return {};
  const QMargins frame = windowHandle()->frameMargins();
  return {frame.left(), frame.top()};
}

// Where the window that this one is a part of says that it stands, right or wrong: places are worked out from that.
QPoint NativeWindow::OwnersInside() const {
  const auto& owner = *Of(parentWidget());
  return owner.Corner() + owner.WithinFrame();
}

QSize NativeWindow::OuterSize() const {
  if (!HasTitleBar()) return size();
  const QMargins frame = isVisible() ? windowHandle()->frameMargins() : QMargins(-1, -1, -1, -1);
  return size().grownBy(IsFrame(frame) ? frame : Frame().value_or(QMargins()));
}

void NativeWindow::CentreOnce() {
  if (style_.start != FormStyle::Start::kCentred || placed_) return;
  QRect place({}, OuterSize());
  place.moveCenter(screen()->availableGeometry().center());
  MoveTo(place.topLeft());
  centred_ = true;
}

// Whether the frame round the window is known, or there will be none. A centred window is centred with it.
bool NativeWindow::MeetFrame() {
  if (!HasTitleBar() || NoWindowManager() || windowHandle() == nullptr) return true;
  const QMargins frame = windowHandle()->frameMargins();
  if (frame.isNull() || !IsFrame(frame)) return false;
  if (std::exchange(centred_, false) && frame != Frame()) {
    placed_ = false;
    CentreOnce();
    centred_ = false;
  }
  Frame() = frame;
  return true;
}

// Some window managers tell of the frame only after the activation, and some hand the activation to another window; the
// program's own order of steps relies on both. A busy one takes its time before it lets the window be seen at all.
void NativeWindow::AwaitActivation() {
  constexpr int kLookMs = 20;
  const bool framed = MeetFrame();
  const bool seen = windowHandle() == nullptr || windowHandle()->isExposed();
  if ((!framed || !isActiveWindow()) && (!seen || --looks_left_ > 0)) return activation_.start(kLookMs);
  if (!framed && !Frame()) Frame() = QMargins();
  Activated();
}

void NativeWindow::Activated() {
  activation_.stop();
  if (!shown_) return;
  events_.Form_Activate();
  events_.Form_GotFocus();
  if (Frame()) Zoom::FrameIsKnown(QSize(0, 0).grownBy(*Frame()));
}

void NativeWindow::SetShown(bool shown) {
  shown_ = shown;
  if (shown) CentreOnce();
  ShowWhereSeen();
}

// A window that is placed out of sight is not shown, whatever the window manager thinks of such places. Nor is one that
// belongs to another before that one: some window managers would then keep it over all windows of the program, and a
// Wayland session would not know what it belongs to.
void NativeWindow::ShowWhereSeen() {
  const bool owned = isWindow() && parentWidget() != nullptr;
  const bool seen = shown_ && InSight({place_, OuterSize()}) && !(owned && parentWidget()->isHidden());
  if (seen != isHidden() || (seen && standing_.isActive())) return;
  const bool had_keys = isActiveWindow();
  if (seen && !isWindow()) had_focus_ = window()->focusWidget();
  if (seen) LetBeCovered();
  setVisible(seen);
  if (!seen) {
    activation_.stop();
    if (isWindow()) QTimer::singleShot(0, this, [this] { ForgetHidden(); });
    // Without a window manager, or with some, nobody else would give the keys to another window.
    if (had_keys && isWindow()) ActivateEnabled();
    if (had_focus_ != nullptr) had_focus_->setFocus();
    return;
  }
  const QObjectList all = children();
  for (QObject* child : all) {
    if (auto* owned_window = dynamic_cast<NativeWindow*>(child)) owned_window->ShowWhereSeen();
  }
  if (on_top_) settling_.start(0);
  if (!isWindow()) raise();
  if (style_.round) return;
  const bool types_elsewhere = text_line != nullptr && Of(text_line) != this;
  if (types_elsewhere || (!isWindow() && tab_order_.empty())) {
    client_.setFocus();  // no control uses up what is typed
  } else if (focusWidget() == nullptr || !isWindow()) {
    FocusFirstStop();
  }
  looks_left_ = isWindow() && !testAttribute(Qt::WA_ShowWithoutActivating) ? 15 : 1;
  activation_.start(0);
}

}  // namespace morva
