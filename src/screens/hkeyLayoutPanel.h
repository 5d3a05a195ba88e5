#pragma once
#include "hotkeys/hkeyServices.h"
#include <QImage>

class QColor;

// A set drawn as its panel looks on the sales screen: the four column titles over
// four columns of eight keys, each key as the trial panel draws it, in its
// column's colour.
QImage gfLayout_panelImage(const HotKeySet &groups, const QSize &size);

// A column's colour on the screen; the button face for "*Default".
QColor gfLayout_color(qint32 lColor);
