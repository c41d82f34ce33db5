#pragma once

#include <string>

namespace vynhost {

/// How the channels of a file go into the channels of a track: one to one; with fewer channels wanted,
/// channel c is the average of the file's channels c, c + wanted, c + 2 * wanted and so on; with more wanted, the
/// file's channels repeat in order. A constant value without audio of its own.
class ChannelFit {
public:
    /// @param from  channels of the file, at least 1
    /// @param to    channels that are wanted, at least 1
    ChannelFit(int from, int to) : mFrom(from), mTo(to) {}

    /// Fills to[channel][sample] from from[channel][sample]; the two don't overlap.
    /// [any-thread]
    void Apply(float* const* from, float* const* to, int samples) const noexcept;

    /// What a user should know about it; empty when every channel goes through as it is.
    /// @param reason  for this number of channels, which the text puts behind it: "the track has"
    /// [any-thread]
    std::string Describe(std::string const& reason) const;

private:
    int mFrom;
    int mTo;
};

/// "mono", "stereo", or "N-channel".
/// [any-thread]
std::string ChannelCountName(int channels);

/// "one channel" or "N channels".
/// [any-thread]
std::string CountText(int channels);

} // namespace vynhost
