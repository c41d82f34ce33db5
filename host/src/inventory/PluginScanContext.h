#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <vector>

namespace vynaudiofilterhost {

/// What a format keeps during one scan: the modules to look at and the place that has been reached. Made by the
/// format's PluginTechnology, held through boost::intrusive_ptr by the scanner, and gone with it. The base class has no
/// data of its own.
///
/// Life: StartScan once, before anything else; then Continue until it gives false. What a module turned out to be goes
/// to the inventory and the catalogue when the module is done.
class VYN_API PluginScanContext : public vyncore::utility::RefCountedObject {
public:
    PluginScanContext(PluginScanContext const&) = delete;
    PluginScanContext& operator=(PluginScanContext const&) = delete;
    /// [main-thread]
    ~PluginScanContext() override;

    /// Takes the modules to look at, in order, and stands before the first. The flags come from whoever asked for the
    /// scan, unchanged; what they mean is the format's affair.
    /// [main-thread]
    virtual void StartScan(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3) = 0;

    /// Where the scan stands; changes nothing. While there is a current module, `locator` becomes that, `detail` a
    /// short addition to show (empty, or which part of the module), `index` the module's place, from 0. Whether the
    /// scan is still inside the list.
    /// [main-thread]
    virtual bool GetProgress(PluginLocator& locator, vyncore::UString& detail, unsigned long long& index) const = 0;

    /// Does one step, which is bounded: a module is opened when need be, and one class of it or all of it is looked at;
    /// behind a module's end the next one is current. Whether there is more to do.
    /// [main-thread]
    virtual bool Continue() = 0;

protected:
    PluginScanContext();
};

} // namespace vynaudiofilterhost
