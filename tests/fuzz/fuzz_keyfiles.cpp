// Any bytes as SPECIAL.BDF and COUPON.BDF: reading the three keys of each must
// not crash, and a special key read is written back as the same key.
#include "FuzzSupport.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"

namespace {

std::array<SpecialKey, 3> readKeys(bool coupon)
{
    gbCouponKeys = coupon;
    gbSpecialKeys = !coupon;
    std::array<SpecialKey, 3> keys;
    for (int i = 0; i < 3; ++i) {
        keys[i].Index = i;
        gpSpecialKey_read(keys[i]);
    }
    return keys;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = fuzzing::bytesOf(data, size);
    fuzzing::writeDataFile("SPECIAL.BDF", bytes);
    fuzzing::writeDataFile("COUPON.BDF", bytes);
    readKeys(true);
    const std::array<SpecialKey, 3> special = readKeys(false);
    if (!gpSpecialKeys_write(special[0].Caption, special[1].Caption, special[2].Caption))
        fuzzing::fail("the special keys read could not be written");
    const std::array<SpecialKey, 3> again = readKeys(false);
    for (int i = 0; i < 3; ++i) {
        // A key without a line reads as nothing and is written as no line; a coupon
        // line has no character to write as a special key.
        if (special[i].Tag.startsWith(kCouponMarker))
            continue;
        if (special[i].Caption != again[i].Caption || special[i].Tag != again[i].Tag)
            fuzzing::fail("a special key reads back differently", special[i].Caption);
    }
    if (fuzzing::takeBoxes() != 0)
        fuzzing::fail("a box while reading and writing key files");
    return 0;
}
