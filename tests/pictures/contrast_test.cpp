#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolTip>
#include <algorithm>
#include <map>

#include "platform/drawing/qt_color.h"
#include "platform/system/qt_text.h"
#include "tests/pictures/walk.h"

namespace morva {
namespace {

/// Words that are seen, dot by dot: how clearly those dots that stand out most do so from what is behind them.
class Words {
 public:
  Words(const QWidget& seen, const QImage& picture) : seen_(seen), picture_(picture) {}

  /// Of the place in the widget, what stands out least: it is looked at in strips as wide as two letters. 0 where there
  /// are no words at all. `bare` is the picture without them; none where they stand on one colour.
  double Least(const QWidget& widget, QRect place, const QImage& bare = {}) const {
    const double scale = picture_.devicePixelRatio();
    const QRectF within(widget.mapTo(&seen_, place.topLeft()), place.size());
    const QRect dots = QRectF(within.topLeft() * scale, within.size() * scale).toRect() & picture_.rect();
    const QRgb ground = bare.isNull() ? MostFrequent(dots) : 0;
    const int strip = static_cast<int>(16 * scale);
    double least = 0;
    for (int left = dots.left(); left <= dots.right(); left += strip) {
      double best = 1;
      int inked = 0;
      for (int x = left; x < std::min(left + strip, dots.right() + 1); ++x) {
        for (int y = dots.top(); y <= dots.bottom(); ++y) {
          const Color behind = ColorOf(bare.isNull() ? ground : bare.pixel(x, y));
          const double contrast = Contrast(ColorOf(picture_.pixel(x, y)), {behind, behind});
          best = std::max(best, contrast);
          if (contrast > 1.2) ++inked;
        }
      }
      if (inked > 12 * scale && (least == 0 || best < least)) least = best;
    }
    return least;
  }

 private:
  QRgb MostFrequent(const QRect& dots) const {
    std::map<QRgb, int> count;
    for (int y = dots.top(); y <= dots.bottom(); ++y) {
      for (int x = dots.left(); x <= dots.right(); ++x) ++count[picture_.pixel(x, y)];
    }
    const auto less = [](const auto& a, const auto& b) { return a.second < b.second; };
    return count.empty() ? 0 : std::max_element(count.begin(), count.end(), less)->first;
  }

  const QWidget& seen_;
  const QImage& picture_;
};

/// The parameter is the scheme.
class Contrasts : public Walk, public testing::WithParamInterface<const char*> {
 protected:
  void Look(const std::string& name, QWidget& seen) {
    if (name == "change") frmChange->cmdTrash.Enabled = false;
    const QImage picture = ImageOf(seen);
    const QImage bare = WithoutLabels(seen);
    const Words words(seen, picture);
    const auto expect = [&](const QString& text, const QWidget& widget, const QRect& place, bool large = false) {
      if (text.isEmpty() || widget.window() != &seen || widget.visibleRegion().isEmpty()) return;
      const double least =
          words.Least(widget, place, qobject_cast<const QLabel*>(&widget) != nullptr ? bare : QImage());
      EXPECT_GE(least, 0.98 * (large ? kReadableLarge : kReadable)) << name << ": " << text.toStdString();
      ++texts_;
    };
    for (const auto* label : seen.findChildren<QLabel*>()) {
      const auto* control = dynamic_cast<const Label*>(ControlOf(label));
      if (control != nullptr && control->ReliefOf != nullptr) continue;
      const bool large = label->font().bold() && label->font().pixelSize() * kTwipsPerPixel >= 14 * 20;
      expect(label->text(), *label, label->rect(), large);
    }
    for (auto* button : seen.findChildren<QPushButton*>()) {
      const int edge = button->height() < 20 ? 3 : 6;
      expect(button->text(), *button, button->rect().adjusted(edge, edge, -edge, -edge));
    }
    for (const auto* button : seen.findChildren<QRadioButton*>()) {
      expect(button->text(), *button, button->rect().adjusted(15, 3, -3, -3));
    }
    for (const auto* line : seen.findChildren<QLineEdit*>()) {
      expect(line->text(), *line, line->rect().adjusted(5, 3, -5, -3));
    }
    for (const auto* log : seen.findChildren<QPlainTextEdit*>()) {
      expect(log->toPlainText(), *log, log->viewport()->geometry());
    }
    for (const auto* list : seen.findChildren<QListView*>()) {
      for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QRect place = list->visualRect(list->model()->index(row, 0));
        if (list->viewport()->rect().contains(place)) expect("a line", *list->viewport(), place);
      }
    }
    const auto* bar = seen.findChild<QMenuBar*>();
    for (const QAction* action : seen.actions()) {
      const auto* menu = qobject_cast<const QMenu*>(&seen);
      if (menu != nullptr)
        expect(action->text(), seen, menu->actionGeometry(const_cast<QAction*>(action)).adjusted(24, 3, -12, -3));
    }
    if (bar != nullptr) expect("the menu bar", *bar, bar->rect().adjusted(0, 2, 0, -2));
  }

  int texts_ = 0;

 private:
  static QImage ImageOf(QWidget& seen) { return seen.grab().toImage().convertToFormat(QImage::Format_RGB32); }

  static QImage WithoutLabels(QWidget& seen) {
    std::map<QLabel*, QString> texts;
    for (QLabel* label : seen.findChildren<QLabel*>()) {
      if (label->text().isEmpty()) continue;
      texts[label] = label->text();
      label->setText(QChar(0xA0));  // an empty label would change the size of a box
    }
    const QImage bare = ImageOf(seen);
    for (const auto& [label, text] : texts) label->setText(text);
    return bare;
  }
};

TEST_P(Contrasts, EveryTextCanBeRead) {
  QApplication::setPalette(Scheme(GetParam()));
  Go([this](const std::string& name, QWidget& seen) { Look(name, seen); });
  EXPECT_GT(texts_, 100);
  QToolTip::showText({}, TipText("Show co-ordinates"));
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto tip = std::find_if(windows.begin(), windows.end(),
                                [](const QWidget* w) { return w->inherits("QTipLabel") && w->isVisible(); });
  ASSERT_NE(tip, windows.end());
  const QImage picture = (*tip)->grab().toImage().convertToFormat(QImage::Format_RGB32);
  EXPECT_GE(Words(**tip, picture).Least(**tip, (*tip)->rect().adjusted(3, 3, -3, -3)), kReadable);
  QToolTip::hideText();
}

INSTANTIATE_TEST_SUITE_P(Schemes, Contrasts, testing::Values("light", "dark", "contrast"));

}  // namespace
}  // namespace morva
