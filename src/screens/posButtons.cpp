#include "screens/posButtons.h"

MyButton::MyButton(const QString &caption, QWidget *parent) : QPushButton(caption, parent) {}
