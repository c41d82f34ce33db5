#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/Guid.h"

#include <boost/function.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <map>

namespace vynaudiofilterhost {

/// The table of what makes filters: one function for each kind of filter, under the GUID that the descriptors of its
/// filters name. One per process, made on first use. All VST3 filters are one kind, each internal filter is a kind of
/// its own. It takes no notice of what is enabled; utility::CreateAudioFilter does.
class VYN_API AudioFilterFactory {
public:
    /// Makes the filter of a unique ID, suspended; null when it can't.
    using FactoryFunction = boost::function<boost::intrusive_ptr<AudioFilter>(vyncore::UString const&)>;

    /// [main-thread]
    static AudioFilterFactory& GetInstance();

    AudioFilterFactory(AudioFilterFactory const&) = delete;
    AudioFilterFactory& operator=(AudioFilterFactory const&) = delete;

    /// The first function of a GUID stays.
    /// [main-thread]
    void RegisterFactoryFunction(vyncore::utility::Guid const& guid, FactoryFunction const& function);

    /// A new filter: the descriptor of the ID names the function, which is given the ID as it stands here. An ID of
    /// which the catalogue knows nothing is looked for behind "4:" and then behind "2:". Null when there is no
    /// descriptor or no function, or when the function gives null. Throws boost::bad_function_call when the function
    /// is empty.
    /// [main-thread]
    boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& id) const;

private:
    AudioFilterFactory();
    ~AudioFilterFactory();

    std::map<vyncore::utility::Guid, FactoryFunction> mFunctions;
};

} // namespace vynaudiofilterhost
