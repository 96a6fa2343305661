#include "platform/controls/frame.h"

#include <QPainter>
#include <QWidget>

#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

class TitledBox : public QWidget {
 public:
  QString title;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const int left = ToPixels(120), margin = ToPixels(45);
    const QFont fitted = Fitted(font(), title, width() - left - 2 * margin);
    const QFontMetrics metrics(fitted);
    const QRect box = rect().adjusted(0, metrics.height() / 2, -1, -1);
    const QRect text(left, 0, metrics.horizontalAdvance(title) + 2 * margin, metrics.height());
    QPainter painter(this);
    painter.setFont(fitted);
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

}  // namespace

Frame::Frame()
    : Control(std::make_unique<TitledBox>()), Caption({}, [this] {
        As<TitledBox>(*this).title = QtText(Caption());
        Native()->setAccessibleName(QtText(Caption()));
        Native()->update();
      }) {
  Kind = SpokenKind::kGroup;
}

}  // namespace morva
