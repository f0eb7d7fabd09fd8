// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/GenmonForm.h"

#include "forms/PangoMarkup.h"

namespace burnwick {

std::string genmonForm(const SessionFigures &session) {
    return "<txt>" + pangoTitle(session.title()) + "</txt>\n<tool>" + pangoToolTip(session) + "</tool>\n";
}

} // namespace burnwick
