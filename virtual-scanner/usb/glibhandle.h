// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib-object.h>
#include <utility>

namespace vscan {

// Owner of one reference to a GObject.
template <class T>
class GHandle
{
public:
    GHandle() = default;
    explicit GHandle(T* owned) : m_object(owned) {}
    GHandle(GHandle&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    GHandle& operator=(GHandle&& other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~GHandle()
    {
        if (m_object)
            g_object_unref(m_object);
    }
    static GHandle shared(T* object) { return GHandle(static_cast<T*>(g_object_ref(object))); }
    T* get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};

} // namespace vscan
