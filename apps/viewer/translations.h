// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix::viewer {

/// Makes the application speak the language of the person, as far as there is a
/// translation into it: that of its own texts, and that of what its dialogs
/// have from Qt. Call it once, before the first window.
void installTranslations();

} // namespace lorix::viewer
