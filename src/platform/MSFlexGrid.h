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

private:
    void selectCurrent();
    QTableWidgetItem *cell(int row, int col);

    int m_fixedRows = 1;
    int m_fixedCols = 0;
    int m_colSel = 0;
    QVector<int> m_colTwips;
};

} // namespace platform
