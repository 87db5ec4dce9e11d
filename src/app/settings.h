#pragma once

#include <QString>

/// What the program remembers from one session to the next.
struct cAppSettings {
    bool isAnimated = false;
    int animationDelay = 0;  ///< milliseconds
    int zoom = 25;           ///< of the Zoom slider
    int textSize = 12;       ///< points, of the TextSize slider

    /// Where the settings are: below the platform's generic configuration location.
    static QString filePath();
    /// What the file holds. A key that is missing reads as false or 0.
    static cAppSettings read(const QString& path);
    void write(const QString& path) const;
};
