#include "ScreenForms.h"
#include "screens/hkeyLayoutPanel.h"

// Labels measured on a key of the trial panel as it fills a 1024 x 768 screen.
TEST_F(HkTest, LabelsThatTheTrialKeyCannotShowWholeAreNamed)
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
}

TEST(KeyLooks, ContrastOfTheLabelsOnEachNamedColourByTheWcagFormula)
{
    // Black labels on a light colour, white on a dark one, as the layout panel paints them.
    const struct {
        const char *colour;
        double ratio;
    } cases[] = {{"RED", 5.25},     {"DARK_RED", 6.48},   {"BLUE", 2.44},    {"DARK_BLUE", 16.01},
                 {"GREEN", 15.3},   {"DARK_GREEN", 5.14}, {"YELLOW", 19.56}, {"DARK_YELLOW", 1.95},
                 {"CYAN", 16.75},   {"DARK_CYAN", 2.26},  {"MAGENTA", 6.7},  {"DARK_MAGENTA", 5.25},
                 {"unknown", 11.54}};
    for (const auto &c : cases)
        EXPECT_NEAR(gfLayout_contrast(glHotKeyColor_value(c.colour)), c.ratio, 0.01) << c.colour;
}
