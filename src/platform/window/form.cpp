#include "platform/window/form.h"

#include <QApplication>
#include <QMenuBar>
#include <QPushButton>

#include "platform/controls/screen_reader.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"
#include "platform/window/drag.h"
#include "platform/window/native_window.h"
#include "platform/window/placing.h"
#include "platform/window/session.h"
#include "platform/window/stacking.h"

namespace morva {

Form::Form(const FormStyle& style)
    : Caption({},
              [this] {
                // Qt reads [*] as a mark of its own.
                native_->setWindowTitle(QtText(Caption()).replace("[*]", "[*][*]"));
                screen_reader.NameMayChange(*native_);
              }),
      SpokenName({}, [this] { native_->setAccessibleName(QtText(SpokenName())); }),
      Left(
          0, [this] { MoveTo(QPoint(ToPixels(Left.Assigned()), placing_->Corner().y())); },
          [this] { return ToTwips(placing_->Corner().x()); }),
      Top(
          0, [this] { MoveTo(QPoint(placing_->Corner().x(), ToPixels(Top.Assigned()))); },
          [this] { return ToTwips(placing_->Corner().y()); }),
      ScaleWidth(
          0, [this] { native_->SizeClient(QSizeF(ScaleWidth.Assigned(), native_->ClientTwips().height())); },
          [this] { return ToTwips(native_->Client().width()); }),
      ScaleHeight(
          0, [this] { native_->SizeClient(QSizeF(native_->ClientTwips().width(), ScaleHeight.Assigned())); },
          [this] { return ToTwips(native_->Client().height()); }),
      Enabled(true,
              [this] {
                native_->takes_input = Enabled();
                if (Enabled()) return;
                Drag::Abandon(*native_);
                if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
              }),
      BackColor(kButtonFace,
                [this] {
                  native_->background_color = BackColor();
                  native_->Client().update();
                }),
      native_(std::make_unique<NativeWindow>(*this, style)),
      placing_(std::make_unique<Placing>(*native_)),
      stacking_(std::make_unique<Stacking>(*native_, *placing_)) {
  Caption = style.caption;
  native_->SizeClient({style.scale_width, style.scale_height});
  if (style.start == FormStyle::Start::kByCode) placing_->MoveTo({ToPixels(style.left), ToPixels(style.top)});
}

Form::~Form() {
  Drag::Abandon(*native_);
  native_->hide();
}

double Form::Width() const { return ToTwips(placing_->OuterSize().width()); }

double Form::Height() const { return ToTwips(placing_->OuterSize().height()); }

void Form::MoveTo(QPoint corner) {
  placing_->MoveTo(corner);
  stacking_->ShowWhereSeen();
}

void Form::BelongTo(Form& owner) {
  native_->BelongTo(*owner.native_);
  placing_->BelongTo(*owner.placing_);
}

void Form::TypeInto(Control& line) { native_->text_line = line.Native(); }

void Form::Show() { stacking_->Show(); }

void Form::Hide() { stacking_->Hide(); }

void Form::Leave() {
  Drag::Abandon(*native_);
  stacking_->Leave();
}

void Form::SetFocus() {
  // What the other player does must not take the user away from another program.
  if (QGuiApplication::applicationState() != Qt::ApplicationActive) return;
  // Nor away from a box, a file dialog or a menu.
  const QWidget* active = QApplication::activeWindow();
  if (active != nullptr && NativeWindow::Of(active) == nullptr) return;
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr) return;
  // Each move comes here, and asking the window manager takes longer than painting it.
  if (QApplication::activeWindow() == native_.get()) return;
  native_->TakeFocus();
}

void Form::PopupMenu(Menu& menu, double x, double y) {
  menu.OpenAt(native_->Client().mapToGlobal(QPoint(ToPixels(x), ToPixels(y))));
}

void Form::AskForAttention() {
  if (QGuiApplication::applicationState() != Qt::ApplicationActive) QApplication::alert(Native());
}

void Form::StayOnTop(bool on) { stacking_->StayOnTop(on); }

bool Form::CanStayOnTop() const { return CanPlaceWindows(); }

QWidget* Form::Native() const { return native_.get(); }

QWidget* Form::Client() const { return &native_->Client(); }

double Form::ClientLeft() const { return ToTwips(placing_->WithinFrame().x() + native_->Client().x()); }

double Form::ClientTop() const { return ToTwips(placing_->WithinFrame().y() + native_->Client().y()); }

void Form::Place(const std::vector<LayoutRow>& rows) {
  for (const LayoutRow& row : rows) {
    QWidget* parent = row.in != nullptr ? row.in->Native() : Client();
    row.control.PlaceOn(parent, row.left, row.top, row.width, row.height);
    if (!row.text.empty()) row.control.SetLayoutText(row.text);
  }
}

void Form::TabOrder(const std::vector<Control*>& order) {
  std::vector<QWidget*> stops;
  stops.reserve(order.size());
  for (const Control* control : order) stops.push_back(control->Native());
  native_->SetTabOrder(std::move(stops));
}

void Form::SetMenu(std::initializer_list<Menu::Row> rows) {
  for (QAction* action : Menu::Make(*native_, rows)) native_->Bar().addAction(action);
  native_->SizeClient(native_->ClientTwips());
}

void Form::SetPicture(const std::string& name) { native_->SetBackground(name); }

void Form::DefaultButton(Control& button) {
  native_->default_button = static_cast<QPushButton*>(button.Native());
  native_->default_button->setDefault(true);
}

void Form::CancelButton(Control& button) { native_->cancel_button = static_cast<QPushButton*>(button.Native()); }

}  // namespace morva
