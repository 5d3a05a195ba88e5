#pragma once
#include <QPushButton>

// The suite's drawn button: a push button that carries the legacy look
// properties, a text Tag and a picture laid out beside its caption.
class MyButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(int Appearance MEMBER m_Appearance)
    Q_PROPERTY(bool PictureStretch MEMBER m_PictureStretch)
    Q_PROPERTY(int AppearanceThemes MEMBER m_AppearanceThemes)
    Q_PROPERTY(QString PictureDisabledEffect MEMBER m_PictureDisabledEffect)
public:
    explicit MyButton(const QString &caption = QString(), QWidget *parent = nullptr);

    QString Tag;

private:
    int m_Appearance = 0;
    bool m_PictureStretch = false;
    int m_AppearanceThemes = 0;
    QString m_PictureDisabledEffect;
};
