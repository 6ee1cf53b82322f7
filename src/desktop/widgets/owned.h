// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QString>
#include <utility>

namespace k520 {

/// Makes an object that its parent in the toolkit's tree will own: a widget, a layout, a model. The
/// one place where such an object is born.
template <class Object, class... Arguments>
[[nodiscard]] Object* own(Arguments&&... arguments) {
    return new Object(std::forward<Arguments>(arguments)...);
}

/// Makes a control with a name, by which scripts, tests and accessibility find it.
template <class Object, class... Arguments>
[[nodiscard]] Object* ownNamed(const char* objectName, Arguments&&... arguments) {
    auto* object = own<Object>(std::forward<Arguments>(arguments)...);
    object->setObjectName(QLatin1String(objectName));
    return object;
}

}  // namespace k520
