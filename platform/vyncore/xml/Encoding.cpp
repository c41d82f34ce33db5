#include "vyncore/xml/Encoding.h"

namespace vyncore::xml::utils {

UString EncodeReservedCharacters(UString const& text) {
    UString encoded;
    encoded.reserve(text.size());
    for (char16_t const unit : text) {
        switch (unit) {
        case u'&':
            encoded += u"&amp;";
            break;
        case u'<':
            encoded += u"&lt;";
            break;
        case u'>':
            encoded += u"&gt;";
            break;
        default:
            encoded += unit;
        }
    }
    return encoded;
}

} // namespace vyncore::xml::utils
