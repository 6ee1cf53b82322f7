// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
