#pragma once

#include <QStringList>

class tsApp;

/// What `main` does to the window that it made, in this order.

/// Shows the window, maximised, with its icon, its style and its colours.
void showWindow(tsApp& window);
/// Opens the model file that the program was started with, or lets a controlling program drive the window once the
/// event loop runs, if it was started with "--from-python".
/// @param arguments begin with the program's own name; of the others only the first counts.
void openFirstArgument(tsApp& window, const QStringList& arguments);
