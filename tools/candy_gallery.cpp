#include "CandyGallery.h"
#include "candybutton/CandyButton.h"
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

namespace {

// A small picture with a transparent background, as a button's icon would be.
QImage samplePicture()
{
    QImage picture(22, 22, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(40, 40, 40), 1.5));
    p.setBrush(QColor(255, 210, 40));
    QPainterPath star;
    for (int i = 0; i < 10; ++i) {
        const double a = i * 3.14159265 / 5 - 3.14159265 / 2;
        const double r = i % 2 ? 4.5 : 10;
        const QPointF pt(11 + r * std::cos(a), 11 + r * std::sin(a));
        i ? star.lineTo(pt) : star.moveTo(pt);
    }
    star.closeSubpath();
    p.drawPath(star);
    return picture;
}

struct Column {
    QString heading;
    int state;
    bool enabled;
    bool withPicture;
};

} // namespace

QString saveCandyGallery(const QString &folder)
{
    const QList<Column> columns = {
        {"0 up", 0, true, false},          {"1 down", 1, true, false},
        {"2 focus", 2, true, false},       {"3 hover", 3, true, false},
        {"4 checked", 4, true, false},     {"0 up", 0, true, true},
        {"1 down", 1, true, true},         {"3 hover", 3, true, true},
        {"4 checked", 4, true, true},      {"disabled", 0, false, false},
        {"disabled", 0, false, true},
    };
    constexpr int W = 120, H = 60, gap = 8, left = 70, top = 24;
    QWidget page;
    page.setAttribute(Qt::WA_DontShowOnScreen);
    page.setAutoFillBackground(true);
    page.setPalette(QPalette(QColor(236, 236, 236)));
    page.resize(left + columns.size() * (W + gap), top + 6 * (H + gap));
    QList<QPair<CandyButton *, int>> buttons;
    const QImage picture = samplePicture();
    for (int c = 0; c < columns.size(); ++c) {
        auto *heading = new QLabel(columns[c].heading, &page);
        heading->setGeometry(left + c * (W + gap), 4, W, 16);
        heading->setAlignment(Qt::AlignCenter);
    }
    for (int scheme = 1; scheme <= 6; ++scheme) {
        auto *label = new QLabel(QString("scheme %1").arg(scheme), &page);
        label->setGeometry(4, top + (scheme - 1) * (H + gap), left - 8, H);
        for (int c = 0; c < columns.size(); ++c) {
            const Column &col = columns[c];
            auto *b = new CandyButton(&page, QString("cmd%1_%2").arg(scheme).arg(c));
            b->ReadProperties(QVariantMap());
            b->setColorScheme(scheme);
            b->setForeColor(scheme >= 3 ? 0xFFFFFF : 0);
            b->setCaptionHighLite(true);
            b->setIconHighLite(col.withPicture && col.state == 3 && scheme % 2 == 0);
            b->setIconHighLiteColor(0x00FFFF);
            b->setCaptionHighLiteColor(scheme >= 3 ? 0x00FFFF : 0x0000C0);
            if (col.withPicture) {
                b->setPicture(picture);
                b->setPictureAlignment(scheme <= 3 ? 2 : 0);
                b->setCaption(scheme <= 3 ? "Two\rlines" : "&Picture");
            } else {
                b->setCaption(scheme % 2 ? "&Sale" : "Hot\rKey");
            }
            b->setEnabled(col.enabled);
            b->setGeometry(left + c * (W + gap), top + (scheme - 1) * (H + gap), W, H);
            buttons << qMakePair(b, col.state);
        }
    }
    page.show();
    QApplication::processEvents();
    for (const auto &[button, state] : buttons) button->Redraw(state);
    QApplication::processEvents();
    const QString path = QDir(folder).filePath("CandyButton-gallery.png");
    page.grab().save(path);
    return path;
}
