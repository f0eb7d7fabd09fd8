// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/FileMonitor.h"

#include <utility>

namespace burnwick {

FileMonitor::FileMonitor(std::filesystem::path path, std::function<void()> onChange,
                         OpenDirectoryEventSource open)
    : m_path(std::move(path))
    , m_onChange(std::move(onChange))
    , m_open(std::move(open)) {}

void FileMonitor::start() {
    if (!m_source || !m_source->isAt(m_path))
        m_source = m_open(m_path, m_onChange);
}

} // namespace burnwick
