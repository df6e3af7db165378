#pragma once

namespace quillmark {

/// Makes the window's own kinds of controls known to assistive tools: the display as a graphic, the lists by
/// their names and with their entries' colours. More than one call does no more.
void InstallAccessibility();

}  // namespace quillmark
