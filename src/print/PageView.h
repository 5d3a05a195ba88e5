#pragma once
#include <QRectF>
#include <QScrollArea>

namespace print {

class PageDocument;

// The preview of a document: the page shown, at the document's zoom. The
// pointer drags the page; the wheel with Ctrl zooms.
class PageView : public QScrollArea {
    Q_OBJECT
public:
    explicit PageView(PageDocument *doc, QWidget *parent = nullptr);

    // Scrolls so that a rectangle (twips) of the page shown is in sight.
    void scrollIntoView(const QRectF &rect);
    // Pixels per twip at the current zoom.
    qreal scale() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void relayout();

    PageDocument *m_doc;
    QWidget *m_canvas;
    QPoint m_dragFrom;
};

} // namespace print
