#pragma once

class QKeyEvent;
class QWidget;

namespace morva {

class NativeWindow;

/// Offers a pressed key, unless it is a modifier, to the control that has the focus, then to its form. receiver is what
/// the toolkit gives the key to. True: one of them has used it.
bool TakeKey(const QWidget& receiver, NativeWindow& window, const QKeyEvent& event);

}  // namespace morva
