#pragma once

/// Clang's thread safety analysis (-Wthread-safety) checks the lock discipline written down with
/// these marks; other compilers ignore them.
#if defined(__clang__)
#define NVRHW_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define NVRHW_THREAD_ATTRIBUTE(x)
#endif

#define NVRHW_CAPABILITY(name) NVRHW_THREAD_ATTRIBUTE(capability(name))
#define NVRHW_SCOPED_CAPABILITY NVRHW_THREAD_ATTRIBUTE(scoped_lockable)
#define NVRHW_GUARDED_BY(lock) NVRHW_THREAD_ATTRIBUTE(guarded_by(lock))
#define NVRHW_REQUIRES(...) NVRHW_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define NVRHW_EXCLUDES(...) NVRHW_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define NVRHW_ACQUIRE(...) NVRHW_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define NVRHW_RELEASE(...) NVRHW_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define NVRHW_NO_THREAD_SAFETY_ANALYSIS NVRHW_THREAD_ATTRIBUTE(no_thread_safety_analysis)
