#include "vynhost/Track.h"

#include "vynhost/CommandError.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <algorithm>
#include <stdexcept>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;
using vynmediatypes::ChannelMap;

namespace {

ChannelMap MakeUnconnected(int channels) {
    ChannelMap map;
    for (int channel = 0; channel < channels; ++channel)
        map.AddChannel({}, ChannelMap::kSourceChannelIndex_NoMatch);
    return map;
}

ChannelMap FitMain(AudioFilter::Buses const& buses, BusSpan const& main, AudioChannelLayout const& layout) {
    ChannelMap map = MakeUnconnected(vynaudiofilterhost::utility::CountChannels(buses));
    if (main.bus < 0)
        return map;
    ChannelMap const fit = AudioFilter::BuildBestFitChannelMap({buses[static_cast<std::size_t>(main.bus)]}, layout);
    for (int channel = 0; channel < fit.GetNumberOfChannels(); ++channel) {
        if (fit[channel] >= 0)
            vynaudiofilterhost::utility::SetMapping(map, main.firstChannel + channel, fit[channel]);
    }
    return map;
}

ChannelMap TakeChoice(char const* half, std::vector<int> const& choice, int filterChannels, int targets) {
    std::string const where = std::string("--map ") + half + ": ";
    int const entries = static_cast<int>(choice.size());
    if (entries > filterChannels)
        throw CommandError::WrongUsage(where + std::to_string(entries) + " entries, and the plug-in has " +
                                       CountText(filterChannels));
    ChannelMap map = MakeUnconnected(filterChannels);
    for (int channel = 0; channel < entries; ++channel) {
        int const target = choice[static_cast<std::size_t>(channel)];
        if (target >= targets)
            throw CommandError::WrongUsage(where + "there is no channel " + std::to_string(target) + ", only " +
                                           CountText(targets) + " counted from 0");
        if (target >= 0)
            vynaudiofilterhost::utility::SetMapping(map, channel, target);
    }
    return map;
}

std::vector<bool> FindTargets(ChannelMap const& map, int targets) {
    std::vector<bool> found(static_cast<std::size_t>(targets));
    for (int channel = 0; channel < map.GetNumberOfChannels(); ++channel) {
        if (map[channel] >= 0 && map[channel] < targets)
            found[static_cast<std::size_t>(map[channel])] = true;
    }
    return found;
}

// "channel 1", "channels 1 and 3", "channels 1, 4 and 7 to 11"
std::string ListText(std::vector<int> const& channels) {
    std::vector<std::string> runs;
    for (std::size_t first = 0, last = 0; first < channels.size(); first = last + 1) {
        for (last = first; last + 1 < channels.size() && channels[last + 1] == channels[last] + 1;)
            ++last;
        // A run of two reads better as two.
        last = last == first + 1 ? first : last;
        runs.push_back(std::to_string(channels[first]));
        if (last > first)
            runs.back() += " to " + std::to_string(channels[last]);
    }
    std::string text = channels.size() == 1 ? "channel " : "channels ";
    for (std::size_t place = 0; place < runs.size(); ++place) {
        if (place > 0)
            text += place + 1 == runs.size() ? " and " : ", ";
        text += runs[place];
    }
    return text;
}

char const* Verb(std::vector<int> const& channels, char const* singular, char const* plural) {
    return channels.size() == 1 ? singular : plural;
}

} // namespace

Track::Track(AudioFilter& filter, TrackRequest const& request)
    : mFilter(filter),
      mFileChannels(static_cast<int>(request.file.size())),
      mSideChainChannels(static_cast<int>(request.sideChain.size())),
      mLayoutIsAsked(!request.layout.empty()) {
    if (mSideChainChannels > 0 && !filter.CanUseSideChaining())
        throw std::runtime_error("has no side-chain input");
    ChooseLayout(request);
    filter.SetMainTargetBus({u"track", mLayout, AudioBusDescription::kTypeMain});
    filter.SetSideChainTargetBus({u"side chain", request.sideChain, AudioBusDescription::kTypeSideChain});
    filter.SetUseChannelMap(true);
    Connect(request);
    ReadConnections();
}

void Track::ChooseLayout(TrackRequest const& request) {
    mLayout = mLayoutIsAsked ? request.layout : request.file;
    if (request.basis == TrackBasis::kFile)
        RequestMainBuses(mFilter, mLayout);
    mMainInput = FindMainInput(mFilter);
    mMainOutput = FindMainOutput(mFilter);
    if (mMainOutput.channels <= 0)
        throw std::runtime_error("the plug-in gives no audio: it has no output bus");
    if (!mLayoutIsAsked && mMainOutput.channels > mFileChannels)
        mLayout = mFilter.GetOutputBuses()[static_cast<std::size_t>(mMainOutput.bus)].GetLayout();
}

void Track::CheckMaps() const {
    int const targets = static_cast<int>(mLayout.size());
    for (auto const direction : {AudioFilter::kDirectionInput, AudioFilter::kDirectionOutput}) {
        ChannelMap const map = mFilter.GetChannelMap(direction);
        for (int channel = 0; channel < map.GetNumberOfChannels(); ++channel) {
            if (map[channel] >= targets)
                throw std::runtime_error("a channel map names channel " + std::to_string(map[channel]) +
                                         " of the track, which has " + CountText(targets) + " counted from 0");
        }
    }
}

void Track::Connect(TrackRequest const& request) {
    if (request.basis == TrackBasis::kMaps) {
        CheckMaps();
        return;
    }
    int const targets = static_cast<int>(mLayout.size());
    auto const& [inputs, outputs] = request.choice;
    mFilter.SetChannelMap(
        inputs ? TakeChoice("in", *inputs, mFilter.GetNumberOfInputChannels(), targets + mSideChainChannels)
               : FitInputs(),
        AudioFilter::kDirectionInput);
    mFilter.SetChannelMap(outputs ? TakeChoice("out", *outputs, mFilter.GetNumberOfOutputChannels(), targets)
                                  : FitOutputs(),
                          AudioFilter::kDirectionOutput);
    if (!inputs && mSideChainChannels > 0)
        ConnectSideChain();
}

ChannelMap Track::FitInputs() const {
    return FitMain(mFilter.GetInputBuses(), mMainInput, mLayout);
}

ChannelMap Track::FitOutputs() const {
    return FitMain(mFilter.GetOutputBuses(), mMainOutput, mLayout);
}

// Where the track has more channels than the plug-in's main input, or the main input stands behind others, the
// library's choice may put two channels in one place. It is taken only when it connects as much as could be.
void Track::ConnectSideChain() {
    int const main = static_cast<int>(mLayout.size());
    int const targets = main + mSideChainChannels;
    ChannelMap inOrder = FitInputs();
    for (int channel = 0, next = main; channel < inOrder.GetNumberOfChannels() && next < targets; ++channel) {
        if (!mMainInput.Has(channel))
            vynaudiofilterhost::utility::SetMapping(inOrder, channel, next++);
    }
    mFilter.AutoConnectSideChainChannels(true);
    if (FindTargets(mFilter.GetChannelMap(AudioFilter::kDirectionInput), targets) != FindTargets(inOrder, targets))
        mFilter.SetChannelMap(inOrder, AudioFilter::kDirectionInput);
}

void Track::ReadConnections() {
    int const main = static_cast<int>(mLayout.size());
    mIsRead = FindTargets(mFilter.GetChannelMap(AudioFilter::kDirectionInput), main + mSideChainChannels);
    mIsFed = FindTargets(mFilter.GetChannelMap(AudioFilter::kDirectionOutput), main);
}

template <class Matches>
std::vector<int> Track::FindChannels(int from, int to, Matches const& matches) const {
    std::vector<int> found;
    for (int channel = from; channel < to; ++channel) {
        if (matches(channel))
            found.push_back(channel);
    }
    return found;
}

bool Track::HasChannelsAround() const {
    return !FindChannels(0, GetChannels(), [this](int channel) { return GoesAround(channel); }).empty();
}

// Whether a channel of the file is heard, by the plug-in or around it.
bool Track::IsUsed(int fileChannel) const {
    for (int channel = 0; channel < GetChannels(); ++channel) {
        bool const carries = fileChannel % GetChannels() == channel % mFileChannels;
        if (carries && (IsRead(channel) || !IsFed(channel)))
            return true;
    }
    return false;
}

std::string Track::DescribeFit() const {
    if (mLayoutIsAsked)
        return GetFit().Describe("the track has");
    if (GetChannels() == mFileChannels || mMainInput.channels <= mFileChannels)
        return {};
    return ChannelFit(mFileChannels, mMainInput.channels).Describe("the plug-in takes");
}

std::vector<std::string> Track::Describe() const {
    std::vector<std::string> notes;
    auto const note = [&notes](std::string text) { notes.push_back(std::move(text)); };
    auto const taken = FindChannels(0, GetChannels(), [this](int channel) { return IsRead(channel); });
    auto const around = FindChannels(0, GetChannels(), [this](int channel) { return GoesAround(channel); });
    auto const silent = FindChannels(0, GetChannels(), [&](int c) { return IsRead(c) && !IsFed(c); });
    auto const unused = FindChannels(0, mFileChannels, [this](int channel) { return !IsUsed(channel); });
    auto const unheard = FindChannels(GetChannels(), GetChannels() + mSideChainChannels,
                                      [this](int channel) { return !IsRead(channel); });

    if (std::string fit = DescribeFit(); !fit.empty())
        note(std::move(fit));
    if (!around.empty())
        note("the plug-in takes " + (taken.empty() ? "no channel" : CountText(static_cast<int>(taken.size()))) +
             " of the track: " + ListText(around) + Verb(around, " goes", " go") + " around it");
    if (!silent.empty())
        note(ListText(silent) + Verb(silent, " is", " are") + " silent: the plug-in takes " +
             Verb(silent, "it", "them") + " and gives nothing back");
    if (mMainInput.channels == 0 && static_cast<int>(unused.size()) == mFileChannels)
        note(ChannelCountName(mFileChannels) + " file not used: the plug-in takes no audio");
    else if (!unused.empty())
        note(ListText(unused) + " of the file" + Verb(unused, " is", " are") +
             " not used: the plug-in gives that channel without taking it");
    if (!unheard.empty())
        note(std::to_string(unheard.size()) + " of " + CountText(mSideChainChannels) +
             " of the side chain not used: the plug-in is not connected with " + Verb(unheard, "it", "them"));
    return notes;
}

} // namespace vynhost
