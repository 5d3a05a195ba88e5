#pragma once
#include <QString>

// Renders every colour scheme of the drawn button in every state to
// FOLDER/CandyButton-gallery.png and returns the file's path.
QString saveCandyGallery(const QString &folder);
