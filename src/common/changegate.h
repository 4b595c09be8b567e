#ifndef QUORVANE_CHANGEGATE_H
#define QUORVANE_CHANGEGATE_H

#include <optional>
#include <tuple>

// Lets work through only when the facts it depends on differ from the last
// time: a refresh that runs fifty times a second but finds something new
// once in a while then costs a comparison the rest of the time.
template<typename... Facts>
class ChangeGate
{
public:
    bool changed(const Facts &...facts)
    {
        std::tuple<Facts...> now(facts...);
        if (last == now)
            return false;
        last = std::move(now);
        return true;
    }

private:
    std::optional<std::tuple<Facts...>> last;
};

#endif
