// Times one redraw of a 120 x 60 drawn button in each state:
// hk_candy_benchmark [REDRAWS]. Nothing is kept between redraws, so each one
// builds its face from nothing, as the control does on every state change.
#include "candybutton/CandyButton.h"
#include "platform/ui/KeyPreviewForm.h"
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr double targetMs = 2.0;

struct Timing {
    double mean, best;
};

Timing time(CandyButton &button, int state, int redraws)
{
    double best = 1e30, total = 0;
    for (int i = 0; i < redraws; ++i) {
        QElapsedTimer t;
        t.start();
        button.Redraw(state);
        const double ms = t.nsecsElapsed() / 1e6;
        best = std::min(best, ms);
        total += ms;
    }
    return {total / redraws, best};
}

QImage picture()
{
    QImage p(24, 24, QImage::Format_ARGB32);
    p.fill(qRgba(200, 40, 40, 255));
    return p;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    const int redraws = argc > 1 ? std::max(1, std::atoi(argv[1])) : 500;

    bool met = true;
    std::printf("one redraw of a 120 x 60 button, %d redraws each (mean / best):\n", redraws);
    for (const bool withPicture : {false, true}) {
        CandyButton button(nullptr, "cmdBench");
        button.ReadProperties(QVariantMap());
        button.resize(120, 60);
        button.setColorScheme(1);
        button.setCaption(withPicture ? "Two\rlines" : "&Sale");
        if (withPicture)
            button.setPicture(picture());
        for (int state = 0; state <= 4; ++state) {
            const Timing t = time(button, state, redraws);
            met = met && t.mean <= targetMs;
            std::printf("  %s, state %d: %.3f ms / %.3f ms\n",
                        withPicture ? "picture and two lines" : "caption", state, t.mean, t.best);
        }
    }
    std::printf("target %.1f ms per redraw: %s\n", targetMs, met ? "met" : "NOT MET");
    return met ? 0 : 1;
}
