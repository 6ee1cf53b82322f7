// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "desktop/widgets/qtText.h"

namespace k520 {

/// An accessible name for a control: its caption, or its object name in a language that has no
/// text for it.
template <class Control>
void nameControl(Control& control, const QString& caption) {
    control.setAccessibleName(caption.isEmpty() ? control.objectName() : plainCaption(caption));
}

/// The caption of a button, a box or a label, with the accessible name that goes with it.
template <class Control>
void captionControl(Control& control, const QString& caption) {
    if constexpr (requires { control.setTitle(caption); }) {
        control.setTitle(caption);
    } else {
        control.setText(caption);
    }
    nameControl(control, caption);
}

}  // namespace k520
