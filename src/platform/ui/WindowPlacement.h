#pragma once

class QWidget;

namespace platform {

// Opens a window maximised; un-maximised it comes back at nine tenths of the
// screen's free area, centred, so its frame and title bar stay on the screen.
void setMaximisedWithin(QWidget &window);

} // namespace platform
