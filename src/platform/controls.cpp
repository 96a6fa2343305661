#include "platform/controls.h"

#include <QButtonGroup>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTimer>

#include "platform/edge.h"
#include "platform/picture.h"
#include "platform/qt_values.h"

namespace morva {

namespace {

template <class W>
W& As(const Control& control) {
  return *static_cast<W*>(control.Native());
}

void Tint(QWidget& widget, QPalette::ColorRole role, Color color) {
  QPalette palette = widget.palette();
  if (palette.color(role) == QtColor(color)) return;
  palette.setColor(role, QtColor(color));
  widget.setPalette(palette);
}

QString StoredPicture(const std::string& name) { return QtText(":/pictures/" + name + ".png"); }

// The layout of a run without a blank takes the square of its length: a long one may break here and there.
QString WithBreaks(const QString& text) {
  constexpr int kLongest = 200;
  constexpr QChar kBreak(0x200B);
  QString result;
  int run = 0;
  for (const QChar c : text) {
    run = c.isSpace() ? 0 : run + 1;
    if (run > kLongest && !c.isLowSurrogate()) {
      result += kBreak;
      run = 1;
    }
    result += c;
  }
  return result;
}

// A push button whose caption wraps.
class WrappingButton : public QPushButton {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const int pushed = option.state.testFlag(QStyle::State_Sunken) ? 1 : 0;
    painter.drawText(rect().translated(pushed, pushed), Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic,
                     caption);
  }
};

// A label whose one line is set narrower where it would be cut off.
class FittingLabel : public QLabel {
 public:
  void Fit(const QFont& wanted) {
    constexpr int kNarrowest = 75;  // per cent
    wanted_ = wanted;
    const QFontMetrics metrics(wanted);
    const int needed = metrics.horizontalAdvance(text());
    const bool one_line = height() < 2 * metrics.lineSpacing();
    QFont fitted = wanted;
    if (one_line && needed > width() && width() > 0) fitted.setStretch(std::max(kNarrowest, 99 * width() / needed));
    if (fitted != font()) setFont(fitted);
  }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { Fit(wanted_); }

 private:
  QFont wanted_ = ProgramFont();
};

// The Tab key enters its group at the chosen button, the arrow keys walk through the group in the tab order, wherever
// the buttons stand.
class GroupedButton : public QRadioButton {
 public:
  void BecomeChosen() {
    if (group() == nullptr) return;
    const QList<QAbstractButton*> buttons = group()->buttons();
    for (QAbstractButton* button : buttons) button->setFocusPolicy(button == this ? Qt::StrongFocus : Qt::ClickFocus);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool forward = event->key() == Qt::Key_Down || event->key() == Qt::Key_Right;
    if (!forward && event->key() != Qt::Key_Up && event->key() != Qt::Key_Left) {
      return QRadioButton::keyPressEvent(event);
    }
    const QList<QAbstractButton*> buttons = group()->buttons();
    QWidget* next = this;
    do {
      next = forward ? next->nextInFocusChain() : next->previousInFocusChain();
    } while (!buttons.contains(next));
    static_cast<QRadioButton*>(next)->setChecked(true);
    next->setFocus(Qt::TabFocusReason);
  }
};

class InputLine : public QLineEdit {
 public:
  std::function<void(int)> key_press;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // Enter belongs to the window's default button.
    if (!enter && !event->text().isEmpty() && key_press) key_press(event->text().front().unicode());
    QLineEdit::keyPressEvent(event);
  }
  void inputMethodEvent(QInputMethodEvent* event) override {
    if (!event->commitString().isEmpty() && key_press) key_press(event->commitString().front().unicode());
    QLineEdit::inputMethodEvent(event);
  }
};

// What a surface shows: its strokes, or a stored picture, inside its border.
class Canvas : public QFrame {
 public:
  Canvas(const PictureBox& box, const Surface& surface) : box_(box), surface_(surface) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
  }
  void Redraw() {
    if (changed_) return;
    changed_ = true;
    update();
  }
  QPixmap stored;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QRect inside = contentsRect();
    QPainter painter(this);
    if (inside != rect()) PaintEdge(painter, rect(), Edge::kSunken, palette());
    if (!stored.isNull()) {
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.drawPixmap(inside, stored);
    } else {
      if (changed_ || picture_.devicePixelRatio() != devicePixelRatioF() || size_ != inside.size()) {
        size_ = inside.size();
        changed_ = false;
        picture_ =
            PictureOf(surface_.Strokes(), box_.BackColor(), inside.width(), inside.height(), devicePixelRatioF());
      }
      painter.drawPixmap(inside.topLeft(), picture_);
    }
  }

 private:
  const PictureBox& box_;
  const Surface& surface_;
  QPixmap picture_;
  QSize size_;
  bool changed_ = true;
};

// A box round other controls, its title standing in its upper edge.
class TitledBox : public QWidget {
 public:
  QString title;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QFontMetrics metrics(font());
    const QRect box = rect().adjusted(0, metrics.height() / 2, -1, -1);
    const QRect text(8, 0, metrics.horizontalAdvance(title) + 6, metrics.height());
    QPainter painter(this);
    painter.setClipRegion(QRegion(rect()) - text);
    painter.setPen(palette().color(QPalette::Light));
    painter.drawRect(box.adjusted(1, 1, 0, 0));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(text, Qt::AlignCenter, title);
  }
};

class ImageWidget : public QWidget {
 public:
  QPixmap stored;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), stored);
  }
};

class Disc : public QWidget {
 public:
  explicit Disc(const CircleShape& shape) : shape_(shape) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QtColor(shape_.BorderColor()));
    painter.setBrush(QtColor(shape_.BackColor()));
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  }

 private:
  const CircleShape& shape_;
};

class RuleWidget : public QWidget {
 public:
  explicit RuleWidget(const Rule& rule) : rule_(rule) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), QtColor(rule_.BorderColor())); }

 private:
  const Rule& rule_;
};

}  // namespace

QFont ProgramFont(double points, bool bold) {
  QFont font;
  font.setFamilies({"Tahoma", "Liberation Sans", "Arial", "DejaVu Sans"});
  font.setPixelSize(ToPixels(points * 20));
  font.setBold(bold);
  return font;
}

CommandButton::CommandButton() : Control(std::make_unique<WrappingButton>()) {
  Caption.assigned = [this] { As<QPushButton>(*this).setText(QtText(Caption())); };
  QObject::connect(&As<QPushButton>(*this), &QPushButton::clicked, [this] {
    if (Click) Click();
  });
}

OptionButton::OptionButton() : Control(std::make_unique<GroupedButton>()) {
  Caption.assigned = [this] { As<QRadioButton>(*this).setText(QtText(Caption())); };
  Value.assigned = [this] { As<QRadioButton>(*this).setChecked(Value()); };
  QObject::connect(&As<QRadioButton>(*this), &QRadioButton::toggled, [this](bool on) {
    Value.Store(on);
    if (!on) return;
    As<GroupedButton>(*this).BecomeChosen();
    if (Click) Click();
  });
}

// The toolkit's own idea of a group takes in the buttons of inner containers.
void OptionButton::PlaceOn(QWidget* parent, double left, double top, double width, double height) {
  Control::PlaceOn(parent, left, top, width, height);
  auto* group = parent->findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly);
  if (group == nullptr) group = new QButtonGroup(parent);
  group->addButton(&As<QRadioButton>(*this));
}

Frame::Frame() : Control(std::make_unique<TitledBox>()) {
  Caption.assigned = [this] {
    As<TitledBox>(*this).title = QtText(Caption());
    Native()->setAccessibleName(QtText(Caption()));
    Native()->update();
  };
}

Label::Label() : Control(std::make_unique<FittingLabel>()) {
  auto& label = As<QLabel>(*this);
  label.setTextFormat(Qt::PlainText);
  label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label.setWordWrap(true);
  Tint(label, QPalette::WindowText, ForeColor());
  Caption.assigned = [this] {
    As<QLabel>(*this).setText(QtText(Caption()));
    As<FittingLabel>(*this).Fit(ProgramFont(FontSize(), FontBold()));
  };
  ForeColor.assigned = [this] { Tint(As<QLabel>(*this), QPalette::WindowText, ForeColor()); };
  FontBold.assigned = FontSize.assigned = [this] { As<FittingLabel>(*this).Fit(ProgramFont(FontSize(), FontBold())); };
  TextAlignment.assigned = [this] {
    As<QLabel>(*this).setAlignment((TextAlignment() == Alignment::kCenter ? Qt::AlignHCenter : Qt::AlignLeft) |
                                   Qt::AlignTop);
  };
}

TextBox::TextBox() : Control(std::make_unique<InputLine>()) {
  auto& line = As<InputLine>(*this);
  line.setMaxLength(INT_MAX);
  line.key_press = [this](int key) {
    if (KeyPress) KeyPress(key);
  };
  QObject::connect(&line, &QLineEdit::textChanged, [this](const QString& text) { Text.Store(StdText(text)); });
  Text.assigned = [this] { As<QLineEdit>(*this).setText(QtText(Text())); };
  SelStart.read = [this] {
    const auto& shown = As<QLineEdit>(*this);
    return shown.hasSelectedText() ? shown.selectionStart() : shown.cursorPosition();
  };
  SelLength.read = [this] { return As<QLineEdit>(*this).selectionLength(); };
  SelStart.assigned = [this] {
    As<QLineEdit>(*this).deselect();
    As<QLineEdit>(*this).setCursorPosition(SelStart.Assigned());
  };
  SelLength.assigned = [this] { As<QLineEdit>(*this).setSelection(SelStart(), SelLength.Assigned()); };
}

TextLog::TextLog() : Control(std::make_unique<QPlainTextEdit>()) {
  auto& log = As<QPlainTextEdit>(*this);
  log.setReadOnly(true);
  log.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  log.setUndoRedoEnabled(false);
  log.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  log.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  log.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  Text.assigned = [this] {
    unshown_.clear();
    As<QPlainTextEdit>(*this).setPlainText(WithBreaks(QtText(Text())));
  };
  SelStart.assigned = [this] { ShowLater(); };
}

void TextLog::Append(const std::string& more) {
  Text.StoreMore(more);
  unshown_ += more;
  ShowLater();
}

// Many new lines in one turn of the event loop cost one layout.
void TextLog::ShowLater() {
  if (show_pending_) return;
  show_pending_ = true;
  QTimer::singleShot(0, Native(), [this] { ShowNow(); });
}

void TextLog::ShowNow() {
  show_pending_ = false;
  auto& log = As<QPlainTextEdit>(*this);
  QTextCursor cursor(log.document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(WithBreaks(QtText(unshown_).remove('\r')));
  unshown_.clear();
  cursor.setPosition(std::min(SelStart(), cursor.position()));
  log.setTextCursor(cursor);
  log.ensureCursorVisible();
}

PictureBox::PictureBox(Border border) : Control(std::make_unique<Canvas>(*this, *this)) {
  auto& canvas = As<Canvas>(*this);
  if (border == Border::kSunken) {
    canvas.setFrameStyle(QFrame::WinPanel | QFrame::Sunken);
    canvas.setLineWidth(2);
  }
  drawn_ = BackColor.assigned = [this] { As<Canvas>(*this).Redraw(); };
  Picture.assigned = [this] {
    auto& shown = As<Canvas>(*this);
    shown.stored = QPixmap(StoredPicture(Picture()));
    const QSizeF size = shown.stored.deviceIndependentSize();
    const int frame = 2 * shown.frameWidth();
    Width = (size.width() + frame) * kTwipsPerPixel;
    Height = (size.height() + frame) * kTwipsPerPixel;
    shown.update();
  };
}

Image::Image() : Control(std::make_unique<ImageWidget>()) {
  Picture.assigned = [this] {
    As<ImageWidget>(*this).stored = QPixmap(StoredPicture(Picture()));
    As<ImageWidget>(*this).update();
  };
}

CircleShape::CircleShape() : Control(std::make_unique<Disc>(*this)) {
  BackColor.assigned = BorderColor.assigned = [this] { Native()->update(); };
}

Rule::Rule() : Control(std::make_unique<RuleWidget>(*this)) {
  BorderColor.assigned = [this] { Native()->update(); };
}

}  // namespace morva
