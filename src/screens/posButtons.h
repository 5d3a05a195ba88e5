#pragma once
#include <QPixmap>
#include <QPushButton>

// The suite's drawn button: caption, picture, alignments and a text Tag. The
// picture sits at the left, scaled to the key's height; the caption takes the
// rest of the face, wrapped, so a 15-character label and a picture both read
// on the smallest key.
class MyButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(int Appearance MEMBER m_Appearance)
    Q_PROPERTY(bool PictureStretch MEMBER m_PictureStretch)
    Q_PROPERTY(int AppearanceThemes MEMBER m_AppearanceThemes)
    Q_PROPERTY(QString PictureDisabledEffect MEMBER m_PictureDisabledEffect)
public:
    explicit MyButton(const QString &caption = QString(), QWidget *parent = nullptr);

    // The caption as given: a carriage return breaks the line, "&" shows as it is.
    QString caption() const { return m_caption; }
    void setCaption(const QString &caption);
    const QPixmap &picture() const { return m_picture; }
    // False when the file is no picture or too large to show; the former picture then stays.
    bool setPicture(const QString &file);
    void clearPicture();
    int captionalignment() const { return m_captionalignment; }
    void setCaptionalignment(int v);
    int captionposition = 0;
    int picturealignment = 0;
    QString Tag;

    // What of the caption the key cannot show at its size, in words ("the word ... is
    // cut"); empty when the whole caption shows.
    QString captionProblem() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect pictureRect() const;
    QRect captionFace() const;
    QFont captionFont(const QRect &face, bool *fits = nullptr) const;
    QString m_caption;
    QPixmap m_picture;
    int m_captionalignment = 0;
    int m_Appearance = 0;
    bool m_PictureStretch = false;
    int m_AppearanceThemes = 0;
    QString m_PictureDisabledEffect;
};

// A clickable key panel of the special key screen: a caption of several lines
// (carriage returns separate them) and a text Tag.
class SpecialKeyPanel : public QPushButton {
    Q_OBJECT
public:
    explicit SpecialKeyPanel(int index, QWidget *parent = nullptr);

    int Index() const { return m_index; }
    QString Caption() const { return m_caption; }
    void setCaption(const QString &caption);
    QString Tag;

private:
    int m_index;
    QString m_caption;
};
