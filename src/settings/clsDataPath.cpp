#include "settings/clsDataPath.h"

clsDataPath gDataPath;
