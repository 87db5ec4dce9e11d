#pragma once

#include <QMessageBox>
#include <cstdint>
#include <functional>

/// Boxes that tell the user something, and what becomes of them where perhaps nobody is there to close them.
namespace messageBox {

/// Takes the code and the text of every box that would be waited for. While it is set none is: a box stands until it is
/// closed, or until the next one takes its place. Set by the window while another program drives it.
inline std::function<void(std::int32_t code, const QString& text)> listener;

/// Shows a box with an Ok button and, without a listener, waits until it is closed.
///
/// The box belongs to `parent` and may be taken down together with it: a caller that goes on afterwards must know
/// whether what it works on is still there.
/// @param code of the failure that is told; 0 where there is none.
void show(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, std::int32_t code = 0);

/// Shows a box that nobody has to wait for.
void showAside(QMessageBox& box);

}  // namespace messageBox
