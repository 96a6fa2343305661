#pragma once

#include <QString>

class QAccessibleInterface;
class QObject;
class QWidget;

namespace morva {

/// Gives the window, for assistive tools alone, a status bar for what is announced.
void MakeStatusBar(QWidget& window);
bool IsStatusBar(const QObject* object);

/// Tells assistive tools before long, and once, where the widget's name is another one by then.
void TellNameLater(QWidget& widget);

/// What assistive tools are given for a status bar and what stands in it; nullptr for anything else. For
/// QAccessible::installFactory.
QAccessibleInterface* SpokenAnnouncement(const QString& kind, QObject* object);

}  // namespace morva
