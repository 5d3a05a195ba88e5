#pragma once

class QWidget;

bool gfbWindow_topMost(QWidget *hWnd, bool bOnTop);
