// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// Takes the keyboard to a widget that takes it, else to the first one in it that does. False when
/// there is none.
bool focusFirstIn(QWidget* top);
