#pragma once
#include <QString>

// The largest picture a key shows, in pixels each way; a larger one would take
// hundreds of megabytes to draw at every station.
inline constexpr int kMaxPictureSide = 4096;

// What stands in the way of showing the picture file at `path` on a key, in the
// user's words ("cannot be read as a picture"); empty when it can be shown.
QString hotKeyPictureProblem(const QString &path);
