#pragma once

namespace velto {

/// Tells screen readers what the toolkit leaves out about what can be pressed: that it is disabled. And a control that is
/// disabled, or lies under a dialog, takes no action from them. To be called before QML makes any item; calling it again does no
/// harm.
void tellWhatIsGreyed();

} // namespace velto
