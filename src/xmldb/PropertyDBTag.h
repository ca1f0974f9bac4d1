// Tag codes of the property database element vocabulary (internal).
#pragma once

#include <cstdint>

namespace TargetOperations {

// Codes 1 to 42 are the valid ones; 0 stands for "NONE" and for every unknown name.
enum PropertyDBTag : std::uint32_t {
    Tag_NONE = 0,
    Tag_RLX = 1,
    Tag_JOB_MAJOR_V = 2,
    Tag_JOB_MINOR_V = 3,
    Tag_SUBLIST = 4,
    Tag_ALLOWEDLIST = 5,
    Tag_ALLOWEDITEM = 6,
    Tag_ROOT = 7,
    Tag_CATEGORY = 8,
    Tag_PROPERTY = 9,
    Tag_PROPERTY_STRING = 10,
    Tag_PROPERTY_INTEGER = 11,
    Tag_PROPERTY_LOCATION = 12,
    Tag_PROPERTY_LOCATION_64 = 13,
    Tag_PROPERTY_BOOL = 14,
    Tag_NAME = 15,
    Tag_KEYNAME = 16,
    Tag_KEYNUMBER = 17,
    Tag_KEYITEM = 18,
    Tag_CHILDKEY = 19,
    Tag_TYPE = 20,
    Tag_PAGE = 21,
    Tag_VALUE = 22,
    Tag_ENUMVALUE = 23,
    Tag_DESCRIPTION = 24,
    Tag_RANGE_LO = 25,
    Tag_RANGE_HI = 26,
    Tag_DISPLAYTYPE = 27,
    Tag_EDITABLE = 28,
    Tag_DISABLE = 29,
    Tag_ALLOWED_STRING = 30,
    Tag_ALLOWED_CATEGORY = 31,  // no element name maps here: an item's category stays 0
    Tag_ALLOWED_ENUM = 32,
    Tag_ALLOWED_HALT = 33,
    Tag_ALLOWED_INTEGER = 34,
    Tag_ALLOWED_KEY = 35,
    Tag_ALLOWED_SAMELEVEL_KEY = 36,
    Tag_EVENT_ITEM = 37,
    Tag_EVENT_NAME = 38,
    Tag_EVENT_CATEGORY = 39,
    Tag_EVENT_ID = 40,
    Tag_REPLACABLE = 41,
    Tag_REPLACABLE_ALLOWED = 42
};

}  // namespace TargetOperations
