#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRadioButton>
#include <algorithm>
#include <map>

#include "platform/drawing/contrast.h"
#include "platform/drawing/desktop_colors.h"
#include "tests/pictures/walk.h"

namespace morva {
namespace {

Color MostFrequent(const QImage& picture) {
  std::map<QRgb, int> count;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++count[picture.pixel(x, y)];
  }
  const auto less = [](const auto& a, const auto& b) { return a.second < b.second; };
  return count.empty() ? 0 : ColorOf(std::max_element(count.begin(), count.end(), less)->first);
}

/// How clearly the words in the picture stand out where they do so least, in strips as wide as two letters: in each,
/// the dots that stand out most are their strokes. 0 where there are no words at all. `bare` is the picture without
/// them; none where they stand on one colour.
double LeastContrast(const QImage& picture, const QImage& bare = {}) {
  const double scale = qApp->devicePixelRatio();
  const Color ground = MostFrequent(picture);
  const int strip = static_cast<int>(16 * scale);
  double least = 0;
  for (int left = 0; left < picture.width(); left += strip) {
    double best = 1;
    int inked = 0;
    for (int x = left; x < std::min(left + strip, picture.width()); ++x) {
      for (int y = 0; y < picture.height(); ++y) {
        const Color behind = bare.isNull() ? ground : ColorOf(bare.pixel(x, y));
        const double contrast = Contrast(ColorOf(picture.pixel(x, y)), {behind, behind});
        best = std::max(best, contrast);
        if (contrast > 1.2) ++inked;
      }
    }
    if (inked > 12 * scale && (least == 0 || best < least)) least = best;
  }
  return least;
}

QImage ImageOf(QWidget& seen) { return seen.grab().toImage().convertToFormat(QImage::Format_RGB32); }

/// The widget and all that stands on it.
QWidgetList PartsOf(QWidget& seen) { return seen.findChildren<QWidget*>() << &seen; }

QImage WithoutLabels(QWidget& seen) {
  std::map<QLabel*, QString> texts;
  for (QWidget* widget : PartsOf(seen)) {
    auto* label = qobject_cast<QLabel*>(widget);
    if (label == nullptr || label->text().isEmpty()) continue;
    texts[label] = label->text();
    label->setText(QChar(0xA0));  // an empty label would change the size of a box
  }
  const QImage bare = ImageOf(seen);
  for (const auto& [label, text] : texts) label->setText(text);
  return bare;
}

/// The parameter is the scheme.
class Contrasts : public Walk, public testing::WithParamInterface<const char*> {
 protected:
  void Look(const std::string& name, QWidget& seen) {
    if (name.ends_with("-large")) return;  // the places below are those at 100 per cent
    if (name == "change") frmChange->cmdTrash.Enabled = false;
    if (name == "table-start") LookAtTheBoard();
    const QImage picture = ImageOf(seen), bare = WithoutLabels(seen);
    const bool dark = GetParam() != std::string("light");
    const auto expect = [&](const QWidget& widget, const QRect& place, const QString& text, double needed = kReadable) {
      if (text.isEmpty() || widget.window() != &seen || widget.visibleRegion().isEmpty()) return;
      const double scale = picture.devicePixelRatio();
      const QRectF within(widget.mapTo(&seen, place.topLeft()), place.size());
      const QRect dots = QRectF(within.topLeft() * scale, within.size() * scale).toRect() & picture.rect();
      const bool label = qobject_cast<const QLabel*>(&widget) != nullptr;
      const double least = LeastContrast(picture.copy(dots), label ? bare.copy(dots) : QImage());
      EXPECT_GE(least, 0.98 * needed) << name << ": " << text.toStdString();
      ++texts_;
    };
    for (const QWidget* widget : PartsOf(seen)) {
      const QString text = widget->property("text").toString();  // of labels, buttons and lines
      if (qobject_cast<const QLabel*>(widget) != nullptr) {
        const auto* control = dynamic_cast<const Label*>(ControlOf(widget));
        const bool large = control != nullptr && control->FontBold() && control->FontSize() >= 14;
        const bool relief = control != nullptr && control->ReliefOf != nullptr;
        if (!relief) expect(*widget, widget->rect(), text, large ? kReadableLarge : kReadable);
      } else if (qobject_cast<const QMenuBar*>(widget) != nullptr) {
        expect(*widget, widget->rect().adjusted(0, 2, 0, -2), "the menu bar");
      } else if (widget != &seen) {  // a box has its label's text
        const int edge = widget->height() < 20 ? 3 : 6;
        const int left = qobject_cast<const QRadioButton*>(widget) != nullptr ? 15 : edge;
        expect(*widget, widget->rect().adjusted(left, edge, -edge, -edge), text);
        const bool line = qobject_cast<const QLineEdit*>(widget) != nullptr && widget->isEnabled();
        // The upper edge of a line, from the window above it on.
        const QRect outline(widget->width() / 2, -3, 16, 5);
        if (line && dark) expect(*widget, outline, "outline", 2.8);
      }
    }
    if (auto* menu = qobject_cast<QMenu*>(&seen)) {
      for (QAction* item : menu->actions()) {
        const QRect place = menu->actionGeometry(item);
        expect(*menu, place.adjusted(24, 3, -12, -3), item->text());
        if (item->isSeparator() && dark) expect(*menu, place.adjusted(24, 0, -24, 0), "separator", 2.8);
      }
      if (dark) expect(*menu, {menu->width() / 2, menu->height() - 2, 16, 2}, "outline", 2.8);
    }
  }

  static void LookAtTheBoard() {
    const Color one = frmChess->squ(0).BackColor(), other = frmChess->squ(1).BackColor();
    for (const Color square : {one, other}) {
      for (const Color piece : {kWhite, kBlack}) EXPECT_GE(Contrast(piece, {square, square}), 3) << square;
    }
    EXPECT_GE(Contrast(one, {other, other}), 2);
  }

  int texts_ = 0;
};

TEST_P(Contrasts, EveryTextAndEachPieceStandsOut) {
  QApplication::setPalette(Scheme(GetParam()));
  Go([this](const std::string& name, QWidget& seen) { Look(name, seen); });
  EXPECT_GT(texts_, 100);
}

INSTANTIATE_TEST_SUITE_P(Schemes, Contrasts, testing::Values("light", "dark", "contrast"));

}  // namespace
}  // namespace morva
