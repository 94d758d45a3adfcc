#pragma once

namespace velto {

/// Reports to screen readers that a control is disabled or unfolded, which the toolkit leaves out. And a control that is
/// disabled, or lies under a dialog, takes no action from them. To be called before QML makes any item; calling it again does no
/// harm.
void tellWhatIsGreyed();

} // namespace velto
