#pragma once

// The screen's pointer: 1 the arrow, 11 the hourglass.
void gpMouse_default();
void gpMouse_wait();
int giMouse_pointer();
