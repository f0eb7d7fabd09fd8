// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/GenmonForm.h"

#include "report/PangoMarkup.h"

namespace burnwick {

std::string genmonForm(const SessionFigures &session) {
    return "<txt>" + pangoTitle(session.title()) + "</txt>\n<tool>" + pangoToolTip(session) + "</tool>\n";
}

} // namespace burnwick
