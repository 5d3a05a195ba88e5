#pragma once
#include "platform/Port.h"

class QDialog;

namespace platform {

// Shows a form modally and returns when it is closed.
class ModalShower {
public:
    virtual ~ModalShower() = default;
    virtual int show(QDialog &form) = 0;
};

class ExecModalShower : public ModalShower {
public:
    int show(QDialog &form) override;
};

using ModalPort = Port<ModalShower, ExecModalShower>;

int showModal(QDialog &form);

} // namespace platform
