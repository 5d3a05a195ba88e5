#include "platform/ui/Modal.h"
#include <QDialog>

namespace platform {

int ExecModalShower::show(QDialog &form)
{
    return form.exec();
}

int showModal(QDialog &form)
{
    return ModalPort::get().show(form);
}

} // namespace platform
