#pragma once
#include "hotkeys/hkeySetCheck.h"
#include <functional>

// The mends Check Sets offers for what it finds. Each saves the set as the editor
// does: another station's change since the check is told first, a version kept,
// the file replaced whole.
namespace setcheck {

enum class Fix {
    None,
    ClearLink,    // a link to a set that is gone, or to its own set
    ClearPicture, // a picture that cannot be shown
    EditKey,      // an item the inventory lacks or has deleted: the key dialog
    ClearKey,     // a left-over key
};

Fix fixFor(const Finding &finding);
// The command that offers the fix, as a button and a menu show it.
QString fixCaption(Fix fix);

// Changes the set of `finding` as the check read it and saves it; false when
// nothing was written (the user kept another station's file, or the save failed).
bool changeSet(const Finding &finding, const std::function<void(HotKeySet &)> &change);
// Applies the clearing fixes of `findings` (no EditKey), one save per set; the
// number of keys mended.
int applyFixes(const QList<Finding> &findings);

} // namespace setcheck
