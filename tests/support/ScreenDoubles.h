#pragma once
#include "platform/ui/Modal.h"
#include "support/HkTest.h"
#include <QColor>
#include <QDialog>
#include <QTest>

namespace testing_support {

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

// Every test of the program shows its modal forms through its own ScriptedModal.
inline void showModalFormsPerTest()
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

// A double click as the platform delivers it: a click, then the double click.
inline void doubleClick(QWidget *widget, const QPoint &pos)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, pos);
}

// A colour as the files store it (0x00BBGGRR) as the screen shows it.
inline QRgb rgbOf(quint32 colour)
{
    return qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

} // namespace testing_support
