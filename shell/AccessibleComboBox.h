#pragma once

namespace tallyvox {

/// Has screen readers name each pop-up menu (QComboBox) by its accessible name, the
/// label beside it, and give the chosen item as its value. Qt on Linux names a pop-up by
/// its chosen item, so that "Sort words" was read as "By frequency". Once per process,
/// after the application object exists.
void installAccessibleComboBoxes();

} // namespace tallyvox
