#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/proplist/PropList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

/// What tests share, and the names that most tests of the host use: their sources say `using namespace vyntest`.
namespace vyntest {

using namespace vynaudiofilterhost;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vyncore::UString;
using vyncore::filesupport::File;
using vyncore::proplist::PropList;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;
using vynmediatypes::ChannelMap;

using Texts = std::vector<std::string>;

/// Main buses without names, of as many channels each.
inline AudioFilter::Buses Buses(std::initializer_list<int> channelCounts) {
    AudioFilter::Buses buses;
    for (int const channels : channelCounts)
        buses.emplace_back(u"", AudioChannelLayout(static_cast<std::size_t>(channels)), AudioBusDescription::kTypeMain);
    return buses;
}

} // namespace vyntest
