#include "print/PageView.h"
#include "print/PageDocument.h"
#include "print/PageRenderer.h"
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace print {

PageView::PageView(PageDocument *doc, QWidget *parent)
    : QScrollArea(parent), m_doc(doc), m_canvas(new QWidget)
{
    setObjectName("vsvPrinter");
    setAlignment(Qt::AlignCenter);
    setBackgroundRole(QPalette::Dark);
    m_canvas->setAutoFillBackground(false);
    m_canvas->installEventFilter(this);
    m_canvas->setCursor(Qt::OpenHandCursor);
    setWidget(m_canvas);
    connect(doc, &PageDocument::zoomChanged, this, &PageView::relayout);
    connect(doc, &PageDocument::previewPageChanged, this, &PageView::relayout);
    connect(doc, &PageDocument::newPage, this, &PageView::relayout);
    connect(doc, &PageDocument::endDoc, this, &PageView::relayout);
}

qreal PageView::scale() const
{
    return m_doc->Zoom() / 100.0 * logicalDpiX() / 1440.0;
}

void PageView::relayout()
{
    const int n = m_doc->PreviewPage();
    if (n < 1) {
        m_canvas->resize(1, 1);
        return;
    }
    const QSizeF size = m_doc->page(n).size * scale();
    m_canvas->resize(size.toSize());
    m_canvas->update();
}

void PageView::scrollIntoView(const QRectF &rect)
{
    const QRectF r(rect.topLeft() * scale(), rect.size() * scale());
    ensureVisible(int(r.center().x()), int(r.center().y()), int(r.width() / 2) + 40,
                  int(r.height() / 2) + 40);
    m_canvas->update();
}

bool PageView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_canvas)
        return QScrollArea::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Paint: {
        QPainter painter(m_canvas);
        painter.fillRect(m_canvas->rect(), Qt::white);
        const int n = m_doc->PreviewPage();
        if (n >= 1) {
            painter.scale(scale(), scale());
            renderPage(painter, *m_doc, n, true);
        }
        return true;
    }
    case QEvent::MouseButtonPress:
        m_dragFrom = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        m_canvas->setCursor(Qt::ClosedHandCursor);
        return true;
    case QEvent::MouseMove:
        if (static_cast<QMouseEvent *>(event)->buttons() & Qt::LeftButton) {
            const QPoint now = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
            const QPoint d = now - m_dragFrom;
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() - d.x());
            verticalScrollBar()->setValue(verticalScrollBar()->value() - d.y());
            m_dragFrom = now;
        }
        return true;
    case QEvent::MouseButtonRelease:
        m_canvas->setCursor(Qt::OpenHandCursor);
        return true;
    case QEvent::Wheel: {
        auto *wheel = static_cast<QWheelEvent *>(event);
        if (!(wheel->modifiers() & Qt::ControlModifier))
            return false;
        const double step = wheel->angleDelta().y() > 0 ? 25 : -25;
        m_doc->setZoom(std::clamp(m_doc->Zoom() + step, 10.0, 300.0));
        return true;
    }
    default:
        // The scroll area sizes its scroll bars from the page's resize.
        return QScrollArea::eventFilter(watched, event);
    }
}

} // namespace print
