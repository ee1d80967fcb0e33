#pragma once

#include "foundation/SafePointer.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

/// What a function<R> calls.
template <typename R> class NVRHW_API function_obj_base {
public:
    NVRHW_TRACKED

    virtual ~function_obj_base() = default;

    /// Makes the call, in the calling thread.
    virtual R operator()() = 0;
};

/// A member function and the object to call it on, which is neither owned nor counted: whoever
/// runs the callable ends before the object does.
template <typename R, typename C> struct bind_funcobj0 {
    /// The member function.
    R (C::*m_Function)();

    /// The object, not owned.
    C* m_Object;
};

/// Calls a plain function or a functor.
template <typename R, typename F> class NVRHW_API function_obj : public function_obj_base<R> {
public:
    /// Keeps a copy of what it will call.
    explicit function_obj(F function) : m_Function(function) {}

    R operator()() override { return m_Function(); }

private:
    F m_Function;
};

/// Calls a bound member function.
template <typename R, typename C>
class function_obj<R, bind_funcobj0<R, C>> : public function_obj_base<R> {
public:
    /// Keeps the binding; the object stays the caller's.
    explicit function_obj(const bind_funcobj0<R, C>& bound) : m_Bound(bound) {}

    R operator()() override { return (m_Bound.m_Object->*m_Bound.m_Function)(); }

private:
    bind_funcobj0<R, C> m_Bound;
};

/// A copyable callable without arguments. Copies share one callable object, which is deleted with
/// the last of them.
template <typename R> class NVRHW_API function {
public:
    /// Calls a plain function.
    explicit function(R (*plain)())
        : m_Object(new ("function", __LINE__) function_obj<R, R (*)()>(plain)) {}

    /// Calls a member function of the object, which must outlive every copy.
    template <typename C>
    function(R (C::*member)(), C* object)
        : m_Object(new ("function", __LINE__)
                       function_obj<R, bind_funcobj0<R, C>>(bind_funcobj0<R, C>{member, object})) {}

    /// Shares the callable object.
    function(const function&) = default;
    function& operator=(const function&) = default;
    virtual ~function() = default;

    /// Makes the call, in the calling thread.
    R operator()() const { return (*m_Object.operator->())(); }

private:
    SafePointer<function_obj_base<R>> m_Object;
};
