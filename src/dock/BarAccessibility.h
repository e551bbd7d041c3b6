#pragma once

namespace moorline {

/// Tells assistive technology of the bar: the view that shows it is a pane, and every item of the bar stands below
/// it, with its name, state and place, and can be pressed where it can be clicked. Nothing is built until such a
/// technology asks. Later calls do nothing.
void makeBarAccessible();

} // namespace moorline
