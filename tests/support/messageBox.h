#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>
#include <functional>

/// What boxes told while `action` ran: title and text of each, joined by ": ". Each is closed as soon as it stands.
inline QStringList boxesDuring(const std::function<void()>& action) {
    QStringList told;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&told] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        told.append(box->windowTitle() + ": " + box->text());
        box->accept();
    });
    watcher.start(0);
    action();
    return told;
}
