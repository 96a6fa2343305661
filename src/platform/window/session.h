#pragma once

class QWindow;

namespace morva {

/// What the desktop session can and cannot do. Each answer is found once and stays.

/// Prefers the X server within a Wayland session, which lets programs place their windows, unless the user has chosen a
/// platform. To be called before there is a QApplication.
void ChoosePlatform();

/// Whether this is a Wayland session, be the windows its own or those of an X server within it.
bool IsWaylandSession();

/// Whether the windows are on an X server.
bool IsOnXServer();

/// Whether a program may place its windows: no Wayland session allows it.
bool CanPlaceWindows();

/// Whether something gives windows their frames, order and focus.
bool HasWindowManager();

/// Whether the window manager has let it be known that it draws no frame round the window. The answer can change until
/// the window is seen.
bool HasNoFrame(const QWindow& window);

}  // namespace morva
