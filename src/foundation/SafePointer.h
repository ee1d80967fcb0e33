#pragma once

#include "foundation/BaseSafePointer.h"
#include "foundation/XQRuntimeError.h"
#include "platform/base/Export.h"
#include "platform/base/MisuseLog.h"
#include "platform/base/RefCount.h"

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <typeinfo>

template <typename T> class NVRHW_API SafePointer;
template <typename T, typename U> SafePointer<T> dynamic_pointer_cast(const SafePointer<U>& source);

/// A reference-counted pointer whose every use is checked. Misuse writes the line
/// "SafePointer Report:<type> <message>" to standard output, has "<type> <message>" logged and
/// raises XQRuntimeError with the text of the line. A pointer is empty or holds an object; the
/// object is deleted with its last holder.
///
/// A release that finds its record counting another object raises as well, also out of the
/// destructor: a class that holds a SafePointer and overrides a destructor of a base that is not
/// this library's declares its own destructor noexcept.
///
/// Only conversions that keep the address are supported: single inheritance, base first.
///
/// Threads: holders of one object may live in different threads. One SafePointer object must not
/// be assigned or destroyed by two threads at once, nor used while another thread changes it.
template <typename T> class NVRHW_API SafePointer : public BaseSafePointer {
public:
    SafePointer() : m_Pointer(nullptr), m_RefCount(nullptr) {}

    /// Takes ownership of a new object, which must not be null and must not be held already.
    explicit SafePointer(T* object) : m_Pointer(object), m_RefCount(nullptr) {
        if (object == nullptr) {
            report("Construct from NULL original pointer");
        }
        try {
            m_RefCount = RefCountManager::getInstance()->retrieveRefCount(object, typeName());
        } catch (...) {
            delete object;
            throw;
        }
    }

    /// Shares the object of `other`, which must not be empty.
    SafePointer(const SafePointer& other)
        : BaseSafePointer(other), m_Pointer(nullptr), m_RefCount(nullptr) {
        if (other.m_Pointer == nullptr) {
            report("Construct from NULL <T>pointer");
        }
        share(other);
    }

    /// Shares the object of a pointer to a derived class, which must not be empty.
    template <typename U>
    SafePointer(const SafePointer<U>& other) // NOLINT(google-explicit-constructor)
        : m_Pointer(nullptr), m_RefCount(nullptr) {
        if (other.m_Pointer == nullptr) {
            report("Construct from NULL <U>pointer");
        }
        share(other);
    }

    /// Releases the object held so far and shares that of `other`, which must not be empty. When
    /// taking the new reference fails, this pointer is left empty.
    SafePointer& operator=(const SafePointer& other) {
        if (this == &other) {
            return *this;
        }
        if (other.m_Pointer == nullptr) {
            report("Assigned NULL <T>pointer");
        }
        dec_reference();
        share(other);
        return *this;
    }

    ~SafePointer() noexcept(false) override { dec_reference(); }

    /// Releases the object; an empty pointer stays empty. The last release deletes the object
    /// while the record is locked.
    void dec_reference() {
        if (m_Pointer == nullptr) {
            return;
        }
        m_RefCount->lock();
        if (m_RefCount->getPointer() != address()) {
            m_RefCount->unLock();
            m_Pointer = nullptr; // the destructor must not try again
            throw XQRuntimeError("not valid pointer in dec_reference");
        }
        const HandBack handBack{*this, m_RefCount->dec_reference() == 0};
        if (handBack.isLast) {
            delete m_Pointer;
        }
    }

    /// The object; its use is not protected against a concurrent change of this pointer.
    T* operator->() const {
        if (m_Pointer == nullptr) {
            report("Use NULL pointer ->");
        }
        return m_Pointer;
    }

    /// The same, as a reference.
    T& operator*() const {
        if (m_Pointer == nullptr) {
            report("Use NULL pointer *");
        }
        return *m_Pointer;
    }

    /// The object, or null; it is not counted and lives only as long as somebody holds it.
    T* get() const noexcept { return m_Pointer; }

    /// True for a pointer that holds an object.
    explicit operator bool() const noexcept { return m_Pointer != nullptr; }

    /// True for a pointer that holds nothing: made so, released, or left so by a failed assignment.
    bool isNull() const { return m_Pointer == nullptr; }

    /// Writes the report of a misuse to standard output and to the log, and raises it.
    [[noreturn]] static void report(const std::string& message) {
        const std::string misuse = std::string(typeName()) + " " + message;
        const std::string text = "SafePointer Report:" + misuse;
        std::puts(text.c_str());
        MisuseLog::write(misuse.c_str(), "SafePointer", __LINE__);
        throw XQRuntimeError(text);
    }

protected:
    /// The object; null in an empty pointer.
    T* m_Pointer;

    /// Its count record, which outlives the object.
    ref_count* m_RefCount;

private:
    template <typename U> friend class SafePointer;
    template <typename D, typename S>
    friend SafePointer<D> dynamic_pointer_cast(const SafePointer<S>& source);

    /// Ends a release, also when the object's destructor raises.
    struct HandBack {
        SafePointer& pointer;
        const bool isLast;

        ~HandBack() {
            pointer.m_Pointer = nullptr;
            if (isLast) {
                pointer.returnRecord();
            }
            pointer.m_RefCount->unLock();
        }
    };

    // Out of line, so that what every release does stays small enough to be inlined.
    [[gnu::noinline]] void returnRecord() {
        RefCountManager::getInstance()->returnbackRefCount(m_RefCount, typeName());
    }

    /// Adopts a reference that was already taken.
    SafePointer(T* object, ref_count* record) : m_Pointer(object), m_RefCount(record) {}

    static const char* typeName() {
        static const char* const name = reportName(typeid(T));
        return name;
    }

    const volatile void* address() const { return m_Pointer; }

    template <typename U> void share(const SafePointer<U>& source) {
        source.inc_reference();
        m_Pointer = source.m_Pointer;
        m_RefCount = source.m_RefCount;
    }

    /// Takes one more reference to the object of this pointer, which is not empty.
    void inc_reference() const {
        if (m_RefCount == nullptr) {
            report("Already destructed 1");
        }
        if (m_RefCount->lock() != 0) {
            report("Already destructed 2");
        }
        if (m_RefCount->getPointer() != address()) {
            m_RefCount->unLock();
            throw XQRuntimeError("not valid pointer in inc_reference ");
        }
        const int count = m_RefCount->inc_reference();
        m_RefCount->unLock();
        if (count == 0) {
            report("Already destructed 3");
        }
    }
};

/// A pointer to the derived class T that shares the object of `source`. Raises XQRuntimeError when
/// `source` is empty or its object is not a T; the count is then as before.
template <typename T, typename U>
SafePointer<T> dynamic_pointer_cast(const SafePointer<U>& source) {
    if (source.m_Pointer == nullptr) {
        SafePointer<U>::report("dynamic pointer cast NULL pointer");
    }
    SafePointer<U> held(source);
    T* target = dynamic_cast<T*>(held.m_Pointer);
    if (target == nullptr) {
        throw XQRuntimeError("can't dynmic_cast!,src type is(" +
                             std::string(SafePointer<U>::typeName()) + "),dest type is(" +
                             SafePointer<T>::typeName() + ")");
    }
    held.m_Pointer = nullptr; // its reference now belongs to the result
    return SafePointer<T>(target, held.m_RefCount);
}

/// Pointers are equal when they hold the same object or nothing; their order is that of the
/// addresses.
template <typename T, typename U>
bool operator==(const SafePointer<T>& one, const SafePointer<U>& other) noexcept {
    return one.get() == other.get();
}
template <typename T, typename U>
bool operator!=(const SafePointer<T>& one, const SafePointer<U>& other) noexcept {
    return one.get() != other.get();
}
template <typename T, typename U>
bool operator<(const SafePointer<T>& one, const SafePointer<U>& other) noexcept {
    return std::less<const volatile void*>()(one.get(), other.get());
}
template <typename T> bool operator==(const SafePointer<T>& pointer, std::nullptr_t) noexcept {
    return pointer.get() == nullptr;
}
template <typename T> bool operator==(std::nullptr_t, const SafePointer<T>& pointer) noexcept {
    return pointer.get() == nullptr;
}
template <typename T> bool operator!=(const SafePointer<T>& pointer, std::nullptr_t) noexcept {
    return pointer.get() != nullptr;
}
template <typename T> bool operator!=(std::nullptr_t, const SafePointer<T>& pointer) noexcept {
    return pointer.get() != nullptr;
}
