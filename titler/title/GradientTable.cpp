#include "title/GradientTable.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace titler {
namespace {

using Channels = std::array<double, 4>;

struct Entry
{
    Channels colour;
    double position;
};

Channels ChannelsOf(DWORD colour)
{
    const auto channel = [&](int shift) { return static_cast<double>((colour >> shift) & 0xFFu); };
    return {channel(24), channel(16), channel(8), channel(0)};
}

Channels Mix(const Channels& a, const Channels& b, double t)
{
    Channels mixed;
    for (std::size_t i = 0; i < mixed.size(); ++i)
        mixed[i] = a[i] + (b[i] - a[i]) * t;
    return mixed;
}

// Each stop, and between two stops the place where they mix half and half.
std::vector<Entry> Entries(const GradientStops& stops)
{
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < stops.size(); ++i) {
        const SKvCGGradientKey& stop = stops[i];
        const Channels colour = ChannelsOf(stop.colour);
        if (i > 0) {
            const double from = static_cast<double>(stops[i - 1].position);
            const double length = static_cast<double>(stop.position) - from;
            Channels middle = Mix(ChannelsOf(stops[i - 1].colour), colour, 0.5);
            std::transform(middle.begin(), middle.end(), middle.begin(),
                           [](double c) { return std::floor(c); });
            entries.push_back({middle, from + length * static_cast<double>(stop.midPoint)});
        }
        entries.push_back({colour, static_cast<double>(stop.position)});
    }
    return entries;
}

// The colour is multiplied before it is rounded: a title that fades does so without steps of its own.
QRgb Premultiplied(const Channels& colour, double opacity)
{
    const double alpha = std::round(colour[0] * opacity);
    const auto byte = [&](double value) { return static_cast<int>(value * alpha / 255 + 0.5); };
    return qRgba(byte(colour[1]), byte(colour[2]), byte(colour[3]), static_cast<int>(alpha));
}

} // namespace

std::vector<QRgb> GradientTable(const GradientStops& stops, int size, double opacity)
{
    std::vector<QRgb> table(static_cast<std::size_t>(size), 0);
    const std::vector<Entry> entries = Entries(stops);
    if (entries.empty())
        return table;
    std::size_t next = 0;
    for (int i = 0; i < size; ++i) {
        const double t = size > 1 ? static_cast<double>(i) / (size - 1) : 0.0;
        while (next < entries.size() && entries[next].position <= t)
            ++next;
        Channels colour;
        if (next == 0)
            colour = entries.front().colour;
        else if (next == entries.size())
            colour = entries.back().colour;
        else {
            const Entry& a = entries[next - 1];
            const Entry& b = entries[next];
            colour = Mix(a.colour, b.colour, (t - a.position) / (b.position - a.position));
        }
        table[static_cast<std::size_t>(i)] = Premultiplied(colour, opacity);
    }
    return table;
}

} // namespace titler
