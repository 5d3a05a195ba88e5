#pragma once
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeySetCheck.h"
#include <QImage>
#include <QSet>

class QColor;

// A set drawn as its panel looks on the sales screen: the four column titles over
// four columns of eight keys, each key as the trial panel draws it, in its
// column's colour. The places in `marked` (column * 10 + key, key 0 for the column's
// title) are framed in red.
QImage gfLayout_panelImage(const HotKeySet &groups, const QSize &size,
                           const QSet<int> &marked = {});

// A column's colour on the screen; the button face for "*Default".
QColor gfLayout_color(qint32 lColor);

// The colour of the labels on a column of that colour.
QColor gfLayout_textColor(qint32 lColor);
// How well the labels of a column read on its colour: the contrast ratio of the two
// by the WCAG formula, from 1 (none) to 21 (black on white).
double gfLayout_contrast(qint32 lColor);

// The screen a key label must fit, as the trial panel fills it.
inline constexpr QSize kLayout_checkScreen(1024, 768);
// The drawing of keys for Check Sets: labels measured on a key of the trial panel
// on that screen, contrast on the column colours as the panel paints them.
setcheck::Drawing gfLayout_drawing();
