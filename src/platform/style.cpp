#include "platform/style.h"

namespace morva {

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
