#pragma once
#include "candybutton/Subclasser.h"
#include <QFont>
#include <QImage>
#include <QRegion>
#include <QVariantMap>
#include <QWidget>

class QSettings;

// A drawn button: a rounded, glossy face with a caption and an optional
// picture, coloured from one of six schemes or from four colours of its own.
// Colours are platform values (red in the low byte, see CandyColor.h).
// Every redraw paints the whole face into surface() first, then onto the screen.
class CandyButton : public QWidget, private candy::SubclassCallback {
    Q_OBJECT
public:
    // States of a redraw.
    enum { StateUp = 0, StateDown = 1, StateFocus = 2, StateHover = 3, StateChecked = 4 };

    explicit CandyButton(QWidget *parent = nullptr,
                         const QString &name = QStringLiteral("CandyButton"));
    ~CandyButton() override;

    // The first placing: the colours take their defaults and the caption the
    // control's name; no mouse tracking.
    void InitProperties();
    // Every property from the bag, a missing one at its default; then the
    // pointer shape, the caption colour and the mouse tracking. The bag holds
    // only the properties that differ from their defaults.
    void ReadProperties(const QVariantMap &bag);
    QVariantMap WriteProperties() const;
    // The same bag in a settings group.
    void ReadProperties(QSettings &settings);
    void WriteProperties(QSettings &settings) const;

    bool DisplayHand() const { return m_DisplayHand; }
    void setDisplayHand(bool value);
    bool Enabled() const { return m_Enabled; }
    void setEnabled(bool value);
    qint32 ColorScheme() const { return m_ColorScheme; }
    void setColorScheme(qint32 value);
    qint16 BorderBrightness() const { return m_BorderBrightness; }
    void setBorderBrightness(int value);
    bool IconHighLite() const { return m_IconHighLite; }
    void setIconHighLite(bool value);
    quint32 IconHighLiteColor() const { return m_IconHighLiteColor; }
    void setIconHighLiteColor(quint32 value);
    bool CaptionHighLite() const { return m_CaptionHighLite; }
    void setCaptionHighLite(bool value);
    quint32 CaptionHighLiteColor() const { return m_CaptionHighLiteColor; }
    void setCaptionHighLiteColor(quint32 value);
    quint32 ColorBright() const { return m_ColorBright; }
    void setColorBright(quint32 value);
    quint32 ColorButtonDown() const { return m_ColorButtonDown; }
    void setColorButtonDown(quint32 value);
    quint32 ColorButtonUp() const { return m_ColorButtonUp; }
    void setColorButtonUp(quint32 value);
    quint32 ColorButtonHover() const { return m_ColorButtonHover; }
    void setColorButtonHover(quint32 value);
    quint32 ForeColor() const { return m_ForeColor; }
    void setForeColor(quint32 value);
    QImage Picture() const { return m_Picture; }
    void setPicture(const QImage &value);
    bool Checked() const { return m_Checked; }
    void setChecked(bool value);
    qint16 Style() const { return m_Style; }
    void setStyle(qint16 value);
    quint8 PictureAlignment() const { return m_PictureAlignment; }
    void setPictureAlignment(int value);
    QString Caption() const { return m_Caption; }
    void setCaption(const QString &value);
    QFont Font() const { return m_Font; }
    void setFont(const QFont &value);

    void DrawIconWCaption(int state);
    static quint32 BlendColors(quint32 Color1, quint32 Color2, int Percentage);
    static void GetRGB(int &r, int &g, int &b, quint32 Color);

    // The entry of all painting.
    void Redraw(int state);
    const QImage &surface() const { return m_surface; }
    bool Ready() const { return m_Ready; }
    bool MouseOver() const { return m_MouseOver; }
    bool HasFocus() const { return m_HasFocus; }
    qint32 CornerRadius() const { return m_CornerRadius; }
    const QRegion &ShapeRegion() const { return m_ShapeRegion; }
    // The rounded region of a W x H rectangle, built pixel by pixel.
    static QRegion roundedRegion(int W, int H, int R);

signals:
    void Status(const QString &text);
    void Click();
    void DblClick();
    void MouseEnter();
    void MouseLeave();
    // Button and Shift in the legacy values (1 left, 2 right, 4 middle; 1 Shift, 2 Ctrl, 4 Alt).
    void MouseMove(int Button, int Shift, int x, int y);
    void MouseUp(int Button, int Shift, int x, int y);
    void MouseDown(int Button, int Shift, int x, int y);
    // The bag's name of a property that was set.
    void PropertyChanged(const QString &name);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void scCallback(bool bBefore, bool &bHandled, qint32 &lReturn, QWidget *hWnd, int uMsg,
                    quint32 wParam, qint32 lParam, qint32 &UserValue) override;
    void setFaceColor(quint32 &field, quint32 value, const QString &mark);
    void buttonDown(int button, int shift, int x, int y);
    void buttonUp(int button, int shift, int x, int y);
    void trackMouse();
    void BuildShape();
    void PaintFace(int state);
    void PaintGlow(quint32 face, quint32 bright);
    void PaintGloss(quint32 face, quint32 corner);
    void DrawCaption(int state, const QRect &captionRect, bool hasPicture);
    void DrawPicture(int state, QPoint at);

    bool m_DisplayHand = false;
    bool m_Enabled = true;
    qint32 m_ColorScheme = 0;
    qint16 m_BorderBrightness = 0;
    bool m_IconHighLite = false;
    quint32 m_IconHighLiteColor = 0x00FF00;
    bool m_CaptionHighLite = false;
    quint32 m_CaptionHighLiteColor = 0x00FF00;
    quint32 m_ColorBright = 0xFFEDB0;
    quint32 m_ColorButtonDown = 0xE99950;
    quint32 m_ColorButtonUp = 0xE99950;
    quint32 m_ColorButtonHover = 0xFFC090;
    quint32 m_ForeColor = 0;
    QImage m_Picture;
    bool m_Checked = false;
    qint16 m_Style = 0;
    quint8 m_PictureAlignment = 0;
    QString m_Caption;
    QFont m_Font;

    bool m_MouseOver = false;
    bool m_HasFocus = false;
    qint32 m_CornerRadius = 0;
    QRegion m_ShapeRegion;
    bool m_Ready = false;
    bool m_CanTrackMouse = false;
    bool m_leaveRequested = false;
    QImage m_surface;
    candy::Subclasser m_subclass;
};
