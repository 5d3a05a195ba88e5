#pragma once
#include <QTableWidget>
#include <QVector>

namespace platform {

// The legacy grid's members over a QTableWidget. A fixed first row is the
// heading; other rows and columns are cells. Column widths are kept in twips.
class MSFlexGrid : public QTableWidget {
    Q_OBJECT
public:
    explicit MSFlexGrid(QWidget *parent = nullptr);

    int Rows() const { return FixedRows() + rowCount(); }
    void setRows(int rows);
    int Cols() const { return columnCount(); }
    void setCols(int cols);
    int FixedRows() const { return m_fixedRows; }
    void setFixedRows(int rows);
    int FixedCols() const { return m_fixedCols; }
    void setFixedCols(int cols);

    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString &text);

    int ColWidth(int col) const;
    void setColWidth(int col, int twips);

    int Row() const;
    void setRow(int row);
    int Col() const;
    void setCol(int col);
    int ColSel() const { return m_colSel; }
    void setColSel(int col);

    // A new row at the end: its cells are the tab-separated parts of `text`.
    void AddItem(const QString &text);
    void RemoveItem(int row);
    // Empties every cell, headings included.
    void Clear();
    void setColAlignment(int col, Qt::Alignment alignment);
    // Sorts the data rows on column Col(): numbers as numbers, other text
    // without regard to case, as the legacy grid's generic ascending sort does.
    void SortGenericAscending();
    // The order of that sort, for callers that sort rows before they add them.
    static bool GenericLess(const QString &a, const QString &b);
    // Many rows at once: the same as AddItem for each, without the cost per row.
    void AddItems(const QList<QStringList> &rows);
    // Width beyond what the columns ask for goes to every column but the first,
    // in proportion to its ColWidth, so none cuts its text while another runs wide.
    void setSpareWidthShared(bool on);

protected:
    bool viewportEvent(QEvent *event) override;

private:
    void shareSpareWidth();
    void selectCurrent();
    QTableWidgetItem *cell(int row, int col);

    int m_fixedRows = 1;
    int m_fixedCols = 0;
    int m_colSel = 0;
    bool m_shareSpare = false;
    QVector<int> m_colTwips;
    QVector<Qt::Alignment> m_alignments;
};

} // namespace platform
