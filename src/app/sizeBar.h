#pragma once

#include <QToolBar>

class QSlider;

/// The toolbar with the sliders for the scale of the canvas and the size of its texts.
class cSizeBar : public QToolBar {
    Q_OBJECT

public:
    /// Values out of a slider's range leave it at the nearer end.
    cSizeBar(int zoom, int textSize, QWidget* parent = nullptr);

    int zoom() const;

Q_SIGNALS:
    void zoomChanged(int zoom);
    void textSizeChanged(int textSize);

private:
    QSlider* addSlider(const QString& label, const QString& name, int lowest, int highest, int value);

    QSlider* zoomSlider;
    QSlider* textSlider;
};
