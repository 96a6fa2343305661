#pragma once

#include <QString>

class QAccessibleInterface;
class QObject;

namespace morva {

/// What assistive tools are given for a window and its client area; nullptr for anything else. For
/// QAccessible::installFactory.
QAccessibleInterface* SpokenWindow(const QString& kind, QObject* object);

/// Where a screen reader listens, has each popup menu open on its first item, and the focus told again once it is
/// closed.
void LeadIntoPopupMenus();

}  // namespace morva
