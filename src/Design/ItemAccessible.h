#pragma once

namespace velto {

/// Has screen readers told what the toolkit leaves out of what can be pressed: that it is greyed out. And a control that is greyed,
/// or that lies under a dialog, takes no action from them. To be called before QML makes any item; more often does no harm.
void tellWhatIsGreyed();

} // namespace velto
