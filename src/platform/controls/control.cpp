#include "platform/controls/control.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "platform/controls/qt_keys.h"
#include "platform/controls/screen_reader.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

// Chosen by whether Tab leads to the control, and whether a click does.
constexpr Qt::FocusPolicy kFocusPolicies[2][2] = {{Qt::NoFocus, Qt::ClickFocus}, {Qt::TabFocus, Qt::StrongFocus}};

QHash<const QWidget*, Control*>& Controls() {
  static QHash<const QWidget*, Control*> controls;
  return controls;
}

}  // namespace

// Turns Qt's events on the widget into the control's.
class Control::EventFilter : public QObject {
 public:
  explicit EventFilter(Control& control) : control_(control) {}

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        return Press(*static_cast<QMouseEvent*>(event));
      case QEvent::MouseMove:
        Tell(control_.MouseMove, *static_cast<QMouseEvent*>(event));
        return false;
      case QEvent::MouseButtonRelease:
        return Release(*static_cast<QMouseEvent*>(event));
      case QEvent::FocusIn:
        if (control_.GotFocus) TellFocus();
        return false;
      case QEvent::KeyPress:  // which can have come together with the focus
        GotFocus();
        return false;
      default:
        return false;
    }
  }

 private:
  bool Press(const QMouseEvent& event) {
    Tell(control_.MouseDown, event);
    return control_.takes_mouse_;
  }

  bool Release(const QMouseEvent& event) {
    if (!control_.takes_mouse_) return false;
    const bool inside = control_.widget_->rect().contains(event.position().toPoint());
    if (inside && event.button() == Qt::LeftButton && control_.Click) control_.Click();
    return true;
  }

  // Assistive tools must hear of the focus, which Qt tells them after this, before they hear of what the
  // handler does. A selection that comes first hides the control's name from Orca 43.
  void TellFocus() {
    focused_ = true;
    if (!QAccessible::isActive()) return GotFocus();
    QTimer::singleShot(0, this, [this] { GotFocus(); });
  }

  void GotFocus() {
    if (std::exchange(focused_, false)) control_.GotFocus();
  }

  void Tell(const MouseHandler& handler, const QMouseEvent& event) const {
    if (!handler) return;
    const QPointF pixels = event.position() - control_.widget_->contentsRect().topLeft();
    handler(static_cast<int>(event.button()), ShiftOf(event.modifiers()), static_cast<float>(ToTwips(pixels.x())),
            static_cast<float>(ToTwips(pixels.y())));
  }

  Control& control_;
  bool focused_ = false;  // which GotFocus has not been told yet
};

Control::Control(std::unique_ptr<QWidget> widget)
    : Left(0, [this] { Lay(); }),
      Top(0, [this] { Lay(); }),
      Width(0, [this] { Lay(); }),
      Height(0, [this] { Lay(); }),
      Visible(true, [this] { widget_->setVisible(Visible()); }),
      Enabled(true, [this] { widget_->setEnabled(Enabled()); }),
      TabStop((widget->focusPolicy() & Qt::TabFocus) != 0,
              [this] {
                const bool by_click = (widget_->focusPolicy() & Qt::ClickFocus) != 0;
                widget_->setFocusPolicy(kFocusPolicies[TabStop() ? 1 : 0][by_click ? 1 : 0]);
              }),
      ToolTipText({},
                  [this] {
                    widget_->setToolTip(TipText(ToolTipText()));
                    widget_->setAccessibleDescription(QtText(ToolTipText()));
                  }),
      SpokenName({}, [this] { widget_->setAccessibleName(QtText(SpokenName())); }),
      widget_(std::move(widget)),
      takes_mouse_(widget_->focusPolicy() == Qt::NoFocus),
      filter_(std::make_unique<EventFilter>(*this)) {
  Controls().insert(widget_.get(), this);
  widget_->installEventFilter(filter_.get());
  widget_->setFont(ProgramFont());
}

Control::~Control() {
  // The controls inside have owners of their own.
  const QObjectList children = widget_->children();
  for (QObject* child : children) {
    if (auto* inside = qobject_cast<QWidget*>(child); inside != nullptr && ControlOf(inside) != this) {
      inside->setParent(nullptr);
    }
  }
  Controls().remove(widget_.get());
  for (Control* member : members_) member->group_ = nullptr;
  if (group_ != nullptr) std::erase(group_->members_, this);
}

QWidget* Control::Native() const { return widget_.get(); }

void Control::SetFocus() {
  // An open menu has the keyboard focus and gives it back when it closes.
  const bool in_menu = qobject_cast<QMenuBar*>(QApplication::focusWidget()) != nullptr;
  if (!in_menu && QApplication::activePopupWidget() == nullptr) widget_->setFocus();
}

bool Control::HasFocus() const { return widget_->hasFocus(); }

void Control::PlaceOn(QWidget* parent, double left, double top, double width, double height) {
  widget_->setParent(parent);
  Store(Left, left);
  Store(Top, top);
  Store(Width, width);
  Store(Height, height);
  Lay();
  widget_->lower();
  widget_->setVisible(Visible());
}

void Control::JoinGroup(Control& group) {
  group_ = &group;
  group.members_.push_back(this);
}

void Control::SpokenMayChange() {
  if (Spoken) screen_reader.NameMayChange(*widget_);
}

void Control::Rescale() {
  widget_->setFont(ProgramFont());
  Lay();
}

void Control::Lay() {
  const QPoint corner(ToPixels(Left()), ToPixels(Top()));
  widget_->setGeometry(QRect(corner, QSize(ToPixels(Width()), ToPixels(Height()))));
}

Control* ControlOf(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    // Qt takes a control that is not placed yet for a window.
    if (Control* control = Controls().value(widget)) return control;
    if (widget->isWindow()) return nullptr;
  }
  return nullptr;
}

void RescaleControls() {
  const auto controls = Controls();
  for (Control* control : controls) control->Rescale();
}

}  // namespace morva
