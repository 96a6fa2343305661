#include "platform/controls/frame.h"

#include <QPainter>

#include "platform/controls/native.h"
#include "platform/drawing/pixels.h"
#include "platform/system/qt_text.h"

namespace morva {

namespace {

class TitledBox : public QWidget {
 public:
  QString title;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QFontMetrics metrics(font());
    const QRect box = rect().adjusted(0, metrics.height() / 2, -1, -1);
    const QRect text(ToPixels(120), 0, metrics.horizontalAdvance(title) + ToPixels(90), metrics.height());
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

}  // namespace

Frame::Frame()
    : Control(std::make_unique<TitledBox>()), Caption({}, [this] {
        As<TitledBox>(*this).title = QtText(Caption());
        Native()->setAccessibleName(QtText(Caption()));
        Native()->update();
      }) {}

}  // namespace morva
