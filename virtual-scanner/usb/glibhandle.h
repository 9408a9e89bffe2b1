// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib-object.h>
#include <memory>
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
    T* get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};

// Knows an object as long as others keep it.
template <class T>
class GWeakHandle
{
public:
    GWeakHandle() = default;
    explicit GWeakHandle(T* object) : m_ref(new GWeakRef) { g_weak_ref_init(m_ref.get(), object); }
    GHandle<T> lock() const
    {
        return GHandle<T>(m_ref ? static_cast<T*>(g_weak_ref_get(m_ref.get())) : nullptr);
    }

private:
    struct Clear
    {
        void operator()(GWeakRef* ref) const
        {
            g_weak_ref_clear(ref);
            delete ref;
        }
    };
    std::unique_ptr<GWeakRef, Clear> m_ref;
};

} // namespace vscan
