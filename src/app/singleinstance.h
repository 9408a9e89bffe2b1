// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLockFile>
#include <memory>

// Lets one program run per user and install root. The lock file knows the process that holds it, so the lock
// of a killed program is broken at once and any number of simultaneous starts leaves exactly one.
class SingleInstance
{
public:
    SingleInstance();

    // True for the one instance; it holds the lock until the object is destroyed.
    bool isPrimary() const { return m_primary; }

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_primary = false;
};
