#pragma once
#include "lookup/frm_Lookup.h"
#include "platform/ui/MSFlexGrid.h"

namespace testing_support {

// The description on the lookup's first row.
inline QString firstRow(frm_Lookup &f)
{
    return f.fgrdItems->TextMatrix(1, colDescription);
}

} // namespace testing_support
