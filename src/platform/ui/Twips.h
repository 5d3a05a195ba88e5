#pragma once

namespace platform {

// Sizes of the legacy forms are in twips: 15 twips are one pixel at 96 dpi.
int twipsToPixels(int twips);
int pixelsToTwips(int pixels);

} // namespace platform
