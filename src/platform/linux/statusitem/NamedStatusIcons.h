// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace burnwick {

/// The icons of iconNameFor() as files, for hosts that take an icon only by its name. They lie in a private
/// directory below the user's runtime directory and are gone with this object.
class NamedStatusIcons {
public:
    NamedStatusIcons();

    /// The directory; without icons when it could not be written, which is logged.
    [[nodiscard]] QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};

} // namespace burnwick
