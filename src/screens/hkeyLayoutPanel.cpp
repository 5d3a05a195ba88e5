#include "screens/hkeyLayoutPanel.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/posButtons.h"
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPalette>

namespace {

void paintColumn(MyButton *key, qint32 lColor)
{
    if (lColor == kButtonFaceColor)
        return;
    const QColor back = gfLayout_color(lColor);
    QPalette p = key->palette();
    p.setColor(QPalette::Button, back);
    p.setColor(QPalette::ButtonText, back.lightness() < 110 ? Qt::white : Qt::black);
    key->setPalette(p);
}

} // namespace

QColor gfLayout_color(qint32 lColor)
{
    if (lColor == kButtonFaceColor)
        return QApplication::palette().color(QPalette::Button);
    return QColor(lColor & 0xFF, (lColor >> 8) & 0xFF, (lColor >> 16) & 0xFF);
}

QImage gfLayout_panelImage(const HotKeySet &groups, const QSize &size)
{
    QWidget panel;
    panel.setAttribute(Qt::WA_DontShowOnScreen);
    auto *grid = new QGridLayout(&panel);
    grid->setSpacing(6);
    for (int n = 1; n <= 4; ++n) {
        auto *title = new QLabel(groups[n].Caption, &panel);
        title->setAlignment(Qt::AlignCenter);
        QFont bold = title->font();
        bold.setBold(true);
        bold.setPixelSize(std::max(12, size.height() / 40));
        title->setFont(bold);
        grid->addWidget(title, 0, n - 1);
        for (int k = 1; k <= 8; ++k) {
            auto *key = new MyButton(QString(), &panel);
            key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            frmHotKeys_Trial::DrawKey(key, groups[n].Buttons[k], n, k);
            paintColumn(key, groups[n].Color);
            grid->addWidget(key, k, n - 1);
        }
    }
    panel.resize(size);
    panel.show(); // lays the keys out; the panel never reaches the screen
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    panel.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}
