#pragma once

#include "vynaudiofilterhost/VST3/src/VST3ParameterInfo.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The parameters of an edit controller, as a filter lists them when it is made: all IDs, and what the controller says
/// of those that are shown, which have an index. The object that describes one is made when somebody first asks for it,
/// so that thousands of parameters cost little more than the controller's own time.
///
/// Life: Add, Show for what was added last, Finish; then only the descriptions change.
class VST3ParameterList {
public:
    /// Makes room.
    /// [main-thread]
    void Reserve(std::size_t count);

    /// Adds a parameter, not shown.
    /// [main-thread]
    void Add(Steinberg::Vst::ParamID id) { mIDs.push_back(id); }

    /// Gives a parameter the next index.
    /// @param place  in the controller's list
    /// [main-thread]
    void Show(std::int32_t place, Steinberg::Vst::ParameterInfo const& info);

    /// Makes FindIndex ready.
    /// [main-thread]
    void Finish();

    /// Lets go of the descriptions, which hold the controller. A plug-in may look for indexes meanwhile.
    /// [main-thread]
    void ForgetInfos() { mInfos.clear(); }

    /// All IDs, in the controller's order.
    /// [any-thread]
    std::vector<Steinberg::Vst::ParamID> const& GetIDs() const noexcept { return mIDs; }

    /// How many are shown.
    /// [any-thread]
    std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(mShown.size()); }

    /// The ID of a parameter that is shown.
    /// [any-thread]
    Steinberg::Vst::ParamID GetID(std::int32_t index) const { return mShown[static_cast<std::size_t>(index)].id; }

    /// The index of the first shown parameter of that ID, or -1.
    /// [any-thread]
    std::int32_t FindIndex(Steinberg::Vst::ParamID id) const noexcept;

    /// The description of a parameter that is shown; always the same object.
    /// [main-thread]
    VST3ParameterInfo& GetInfo(std::int32_t index, Steinberg::Vst::IEditController& controller);

    /// Asks the controller for names and labels anew.
    /// [main-thread]
    void ReadTitles(Steinberg::Vst::IEditController& controller);

private:
    struct Shown {
        Steinberg::Vst::ParamID id;
        std::int32_t place;
        std::int32_t flags;
        std::int32_t stepCount;
        std::uint32_t text; ///< where in mTexts the title begins; the label stands behind it
        std::uint16_t titleLength;
        std::uint16_t labelLength;
    };

    std::vector<Steinberg::Vst::ParamID> mIDs;
    std::vector<Shown> mShown;
    std::u16string mTexts;
    std::vector<std::uint32_t> mIndexesByID; ///< of mShown, ascending by ID; empty when that is their order
    std::vector<boost::intrusive_ptr<VST3ParameterInfo>> mInfos; ///< null until asked for
};

} // namespace vynaudiofilterhost::vst3
