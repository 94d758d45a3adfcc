// The thread sanitizer takes each clone() for a fork. But the child of QProcess shares its parent's memory, so both of them undo
// what the sanitizer did to one variable before, and from then on it misses every lock that the parent's thread takes. This
// function comes before the sanitizer's.
#include <cstdarg>

extern "C" int __clone(int (*run)(void *), void *stack, int flags, void *argument, ...); // NOLINT(bugprone-reserved-identifier)

extern "C" int clone(int (*run)(void *), void *stack, int flags, void *argument, ...)
{
    va_list more;
    va_start(more, argument);
    void *parentId = va_arg(more, void *);
    void *threadArea = va_arg(more, void *);
    void *childId = va_arg(more, void *);
    va_end(more);
    return __clone(run, stack, flags, argument, parentId, threadArea, childId);
}
