#pragma once

namespace platform {

// Holds the implementation of one platform interface: a test double while a test
// has installed one, else the one a program with screens registered at start,
// else the fallback, which needs no screens.
template <class Interface, class Fallback> class Port {
public:
    static Interface &get()
    {
        if (installed())
            return *installed();
        if (registered())
            return *registered();
        static Fallback fallback;
        return fallback;
    }
    static void install(Interface *impl) { installed() = impl; }
    static void registerProduction(Interface *impl) { registered() = impl; }

private:
    static Interface *&installed()
    {
        static Interface *p = nullptr;
        return p;
    }
    static Interface *&registered()
    {
        static Interface *p = nullptr;
        return p;
    }
};

} // namespace platform
