#include "hotkeys/hkeyGlobal.h"

QString gsHotKeyPicturePath;
QString gsStoreNumber;
bool gbMultiStore = false;
qint16 giInventorySearch = 0;
qint16 giNameSearch = 0;
bool gbCouponKeys = false;
bool gbSpecialKeys = false;
qint16 giLinkOption = 0;
