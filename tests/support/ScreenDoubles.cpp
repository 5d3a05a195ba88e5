#include "support/ScreenDoubles.h"
#include "platform/ui/Modal.h"
#include "support/HkTest.h"
#include <QDialog>
#include <QTest>

namespace testing_support {

namespace {

// Shows the modal forms of the test under way through its ScriptedModal.
class ModalDouble : public platform::ModalShower {
public:
    int show(QDialog &form) override
    {
        const ScriptedModal::Driver driver = script->next(form.metaObject()->className());
        if (!driver) {
            form.reject();
            return QDialog::Rejected;
        }
        form.setResult(QDialog::Rejected);
        form.show();
        driver(form);
        form.hide();
        return form.result();
    }
    ScriptedModal *script = nullptr;
};

} // namespace

void showModalFormsPerTest()
{
    static ModalDouble shower;
    HkTest::extend({[](HkTest &test) {
                        shower.script = &test.modal;
                        platform::ModalPort::install(&shower);
                    },
                    [] {
                        platform::ModalPort::install(nullptr);
                        shower.script = nullptr;
                    }});
}

void doubleClick(QWidget *widget, const QPoint &pos)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, pos);
}

} // namespace testing_support
