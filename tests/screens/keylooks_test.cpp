#include "ScreenForms.h"
#include "screens/hkeyLayoutPanel.h"

// Labels measured on a key of the trial panel as it fills a 1024 x 768 screen, and
// their contrast on each named colour: black on a light one, white on a dark one.
TEST_F(HkTest, LabelsThatTheTrialKeyCannotShowWholeAreNamedAndTheirContrastIsMeasured)
{
    usePictures(dataPath());
    savePicture("square.png", 64, 64);
    const std::string many = QString("Ham Egg ").repeated(40).toStdString();
    const struct {
        const char *caption, *icon, *problem; // the start of what is said; "" when it fits
    } cases[] = {
        {"Coffee", "", ""},
        {"Chocolate Cake!", "", ""}, // the longest label the key dialog takes
        {"Chocolate Cake!", "square.png", ""},
        {"SupercalifragilisticexpialidociousSupercalifragilistic", "", "the word \"Super"},
        {"Supercalifragilisticexpialidocious", "square.png", "the word \"Super"},
        {many.c_str(), "", "it takes "},
    };
    const setcheck::Drawing drawing = gfLayout_drawing();
    for (const auto &c : cases) {
        HotKeyButton key;
        key.Caption = c.caption;
        key.Icon = c.icon;
        const QString problem = drawing.labelProblem(key, 4, 8);
        EXPECT_TRUE(*c.problem ? problem.startsWith(c.problem) : problem.isEmpty())
            << c.caption << " with \"" << c.icon << "\": " << problem.toStdString();
    }
    const struct {
        const char *colour;
        double ratio;
    } colours[] = {{"RED", 5.25},   {"BLUE", 2.44},        {"DARK_BLUE", 16.01}, {"YELLOW", 19.56},
                   {"CYAN", 16.75}, {"DARK_YELLOW", 1.95}, {"unknown", 11.54}};
    for (const auto &c : colours)
        EXPECT_NEAR(drawing.contrast(glHotKeyColor_value(c.colour)), c.ratio, 0.01) << c.colour;
}
