#include "support/ScreenDoubles.h"
#include "support/HkTest.h"
#include <QDialog>
#include <QTest>
#include <memory>

namespace testing_support {

int ModalDouble::show(QDialog &form)
{
    const ScriptedModal::Driver driver =
        m_script.next(QString::fromLatin1(form.metaObject()->className()));
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

void showModalFormsPerTest()
{
    static std::unique_ptr<ModalDouble> current;
    HkTest::extend({[](HkTest &test) {
                        current = std::make_unique<ModalDouble>(test.modal);
                        platform::ModalPort::install(current.get());
                    },
                    [] {
                        platform::ModalPort::install(nullptr);
                        current.reset();
                    }});
}

void doubleClick(QWidget *widget, const QPoint &pos)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, pos);
}

} // namespace testing_support
