#pragma once

namespace quillmark {

/// Names the desktop entry that this program is to the desktop, and gives all windows its icon. Needs a
/// QApplication.
void TellDesktop();

}  // namespace quillmark
