#pragma once

namespace platform {
class MSFlexGrid;
}

// Prints the grid's visible rows and columns as a table under the report
// headings, in portrait when it fits and landscape otherwise, and shows the
// preview modally; returns when the user has closed it.
void gpPrint_FlexGrid(platform::MSFlexGrid &oGrid);
