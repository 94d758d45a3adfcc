#pragma once

namespace velto {

/// Has screen readers told what the toolkit leaves out of what can be pressed: that it is greyed out. And a greyed control takes
/// no action from them. To be called once QML has made something of Qt Quick, which otherwise answers first; more often does no
/// harm.
void tellWhatIsGreyed();

} // namespace velto
