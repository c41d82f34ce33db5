#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vyncore/Export.h"

#include <boost/function.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <utility>
#include <vector>

namespace vynaudiofilterhost {

/// Announces an internal filter from a static object beside the filter's code, before the library is initialised. It
/// holds nothing: what it announces stays for the rest of the process, so the code behind both functions does too.
class VYN_API AudioFilterRegistrar {
public:
    /// Makes a new descriptor of the filter; null for a filter that isn't to be had.
    using DescriptorFunction = boost::function<boost::intrusive_ptr<AudioFilterDescriptor>()>;
    using FilterFactoryFunction = AudioFilterFactory::FactoryFunction;

    /// [main-thread]
    AudioFilterRegistrar(DescriptorFunction const& descriptorFunction,
                         FilterFactoryFunction const& filterFactoryFunction);

    /// Brings all that was announced into the catalogue and the factory, in the order of announcing. Initialize calls
    /// it; each call makes the descriptors anew. Throws boost::bad_function_call at an empty descriptor function.
    /// [main-thread]
    static void RegisterDeferredDescriptors();

private:
    using FactoryVector = std::vector<std::pair<DescriptorFunction, FilterFactoryFunction>>;

    static FactoryVector& GetFactoryVector();
};

} // namespace vynaudiofilterhost
