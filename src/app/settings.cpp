#include "app/settings.h"

#include <QSettings>
#include <QStandardPaths>
#include <algorithm>

namespace {

constexpr QLatin1String animationKey("ANIMATIONTOGGLE");
constexpr QLatin1String delayKey("ANIMATIONSPEED");
constexpr QLatin1String zoomKey("ZOOMSLIDE");
constexpr QLatin1String textSizeKey("FONTSLIDE");

}  // namespace

QString cAppSettings::filePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/timbersim/demosettings.ini");
}

cAppSettings cAppSettings::read(const QString& path) {
    const QSettings file(path, QSettings::IniFormat);
    cAppSettings settings;
    settings.isAnimated = file.value(animationKey).toBool();
    settings.animationDelay = std::max(0, file.value(delayKey).toInt());  // a file edited by hand
    settings.zoom = file.value(zoomKey).toInt();
    settings.textSize = file.value(textSizeKey).toInt();
    return settings;
}

void cAppSettings::write(const QString& path) const {
    QSettings file(path, QSettings::IniFormat);
    file.setValue(animationKey, isAnimated);
    file.setValue(delayKey, animationDelay);
    file.setValue(zoomKey, zoom);
    file.setValue(textSizeKey, textSize);
}
