#pragma once

namespace platform {

// Holds the implementation of one platform interface: the production one by
// default, a test double while a test has installed one.
template <class Interface, class Production> class Port {
public:
    static Interface &get()
    {
        static Production production;
        return installed() ? *installed() : production;
    }
    static void install(Interface *impl) { installed() = impl; }

private:
    static Interface *&installed()
    {
        static Interface *p = nullptr;
        return p;
    }
};

} // namespace platform
