#include "screens/hkeyLayoutPanel.h"
#include "screens/frmHotKeys_Trial.h"
#include "screens/posButtons.h"
#include <QApplication>
#include <QGridLayout>
#include <QHash>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <cmath>
#include <memory>
#include <unordered_map>

namespace {

void paintColumn(MyButton *key, qint32 lColor)
{
    if (lColor == kButtonFaceColor)
        return;
    QPalette p = key->palette();
    p.setColor(QPalette::Button, gfLayout_color(lColor));
    p.setColor(QPalette::ButtonText, gfLayout_textColor(lColor));
    key->setPalette(p);
}

// Relative luminance as WCAG 2 defines it.
double luminance(const QColor &c)
{
    const auto linear = [](int channel) {
        const double v = channel / 255.0;
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(c.red()) + 0.7152 * linear(c.green()) + 0.0722 * linear(c.blue());
}

} // namespace

QColor gfLayout_color(qint32 lColor)
{
    if (lColor == kButtonFaceColor)
        return QApplication::palette().color(QPalette::Button);
    return QColor(lColor & 0xFF, (lColor >> 8) & 0xFF, (lColor >> 16) & 0xFF);
}

QColor gfLayout_textColor(qint32 lColor)
{
    if (lColor == kButtonFaceColor)
        return QApplication::palette().color(QPalette::ButtonText);
    return gfLayout_color(lColor).lightness() < 110 ? Qt::white : Qt::black;
}

double gfLayout_contrast(qint32 lColor)
{
    const double a = luminance(gfLayout_color(lColor));
    const double b = luminance(gfLayout_textColor(lColor));
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QImage gfLayout_panelImage(const HotKeySet &groups, const QSize &size, const QSet<int> &marked)
{
    QHash<int, QWidget *> places;
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
        places.insert(n * 10, title);
        for (int k = 1; k <= 8; ++k) {
            auto *key = new MyButton(QString(), &panel);
            key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            frmHotKeys_Trial::DrawKey(key, groups[n].Buttons[k], n, k);
            paintColumn(key, groups[n].Color);
            grid->addWidget(key, k, n - 1);
            places.insert(n * 10 + k, key);
        }
    }
    panel.resize(size);
    panel.show(); // lays the keys out; the panel never reaches the screen
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    panel.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    if (!marked.isEmpty()) {
        QPainter p(&image);
        p.setPen(QPen(QColor(220, 0, 0), 4));
        for (int place : marked) {
            if (places.contains(place))
                p.drawRect(places[place]->geometry().adjusted(-1, -1, 1, 1));
        }
    }
    return image;
}

namespace {

QSize trialKeySize()
{
    frmHotKeys_Trial trial;
    trial.setAttribute(Qt::WA_DontShowOnScreen);
    trial.resize(kLayout_checkScreen);
    trial.show(); // lays the keys out; the panel never reaches the screen
    const QSize size = trial.cmdHkGroup[1][0]->size();
    trial.hide();
    return size;
}

// A key of the trial panel's size for each picture, drawn with it once; the labels
// are drawn on it in turn, each label, picture and letter measured once.
struct LabelProbe {
    QSize size;
    std::unordered_map<QString, std::unique_ptr<MyButton>> keys; // by picture
    QHash<QString, QString> problems;

    MyButton &keyFor(const HotKeyButton &b)
    {
        std::unique_ptr<MyButton> &key = keys[b.Icon];
        if (!key) {
            key = std::make_unique<MyButton>();
            key->resize(size);
            frmHotKeys_Trial::DrawKeyPicture(key.get(), b);
        }
        return *key;
    }
    QString problem(const HotKeyButton &b, int group, int index)
    {
        const QString id = b.Caption + '\n' + b.Icon + '\n' + QString::number(group * 10 + index);
        const auto known = problems.constFind(id);
        if (known != problems.cend())
            return *known;
        MyButton &key = keyFor(b);
        frmHotKeys_Trial::DrawKeyLabel(&key, b, group, index);
        return problems.insert(id, key.captionProblem()).value();
    }
};

} // namespace

setcheck::Drawing gfLayout_drawing()
{
    auto probe = std::make_shared<LabelProbe>();
    probe->size = trialKeySize();
    return {[probe](const HotKeyButton &b, int group, int index) {
                return probe->problem(b, group, index);
            },
            gfLayout_contrast};
}
