#pragma once
#include "hotkeys/hkeySetCheck.h"

// Replace Item: the keys that Where Used found selling one item are changed to sell
// another, in every set at once, and the whole replace can be taken back.
namespace replace {

// What the keys sell after the replace; an empty label keeps each key's own.
struct Target {
    QString item;
    QString idSelect; // "No" for an S/L, "Yes" for an Item ID
    QString label;
};

// Key `f` as the replace leaves it.
HotKeyButton replaced(const setcheck::Finding &f, const Target &to);
HotKeyButton keyOf(const setcheck::Finding &f);

// One set file the replace rewrote: its bytes before and after.
struct Written {
    QString fileName;
    QByteArray before, after;
};
struct Outcome {
    QList<Written> written;
    int keys = 0;
    QStringList problems; // one line per set that was not rewritten, and why
};
// Rewrites every set of `keys` (Where Used's lines, with the bytes it read), keeping
// a version of each first. A set changed since it was read is left as it is.
Outcome apply(const QList<setcheck::Finding> &keys, const Target &to);

// The sets of a replace that changed since it wrote them; Undo refuses while any has.
QStringList changedSince(const QList<Written> &written);
// Puts back every file the replace wrote, keeping a version of each first; false
// with the reasons when any could not be put back.
bool undo(const QList<Written> &written, QStringList *problems);

} // namespace replace
