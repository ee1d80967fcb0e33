#pragma once

#include <atomic>
#include <memory>

/// One object that is used again and again for the memory it has. Whoever finds it taken makes
/// another, so that nobody waits; of two that come back one is kept. Thread-safe.
template <typename T> class Spare {
public:
    /// Ends the pointer's use of the object.
    struct GiveBack {
        Spare* spare; ///< where it comes from
        /// Gives the object back.
        void operator()(T* object) const { delete spare->m_Object.exchange(object); }
    };
    /// What take() gives.
    using Pointer = std::unique_ptr<T, GiveBack>;

    Spare() = default;
    ~Spare() { delete m_Object.load(); }
    Spare(const Spare&) = delete;
    Spare& operator=(const Spare&) = delete;

    /// As it was left; it comes back with the end of the pointer.
    Pointer take() {
        T* const object = m_Object.exchange(nullptr);
        return Pointer(object != nullptr ? object : new T, GiveBack{this});
    }

private:
    std::atomic<T*> m_Object{nullptr};
};
