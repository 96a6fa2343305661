#include "platform/style.h"

#include "platform/drawing/qt_color.h"

namespace morva {

void Style::polish(QPalette& palette) {
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const auto color = [&](QPalette::ColorRole role) { return palette.color(group, role); };
    const auto mend = [&](QPalette::ColorRole role, const QColor& one, const QColor& other) {
      const Ground ground = With({ColorOf(one), ColorOf(one)}, ColorOf(other));
      palette.setColor(group, role, QtColor(Readable(ColorOf(color(role)), ground)));
    };
    // The style brightens a button's upper edge, and its menus.
    mend(QPalette::ButtonText, color(QPalette::Button), color(QPalette::Button).lighter(150));
    mend(QPalette::Text, color(QPalette::Base), color(QPalette::Base).lighter(108));
    mend(QPalette::WindowText, color(QPalette::Window), color(QPalette::Button));
    mend(QPalette::ToolTipText, color(QPalette::ToolTipBase), color(QPalette::ToolTipBase));
    // Here the text is likely the one colour that was meant so.
    mend(QPalette::Highlight, color(QPalette::HighlightedText), color(QPalette::HighlightedText));
  }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight) return 12;
  if (metric == PM_RadioButtonLabelSpacing) return 3;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* answer) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  // The tool window is not active because the main window is: what happens at an activation happens to one of them.
  if (hint == SH_Widget_ShareActivation) return 0;
  return QProxyStyle::styleHint(hint, option, widget, answer);
}

}  // namespace morva
