// Helpers shared by the XML database tests.
#pragma once

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/LocationProperty.h"
#include "property/LocationProperty2.h"
#include "property/Property.h"
#include "property/StringProperty.h"
#include "support/korvaError.h"
#include "xmldb/PropertyDB.h"

namespace xmldb_test {

using namespace TargetOperations;
using Kw::Mbr::Korva::korvaError;
using Kw::Mbr::Korva::korvaErrorIF;

inline std::string Fixture(const std::string& name) { return std::string(RLX_FIXTURES_DIR) + "/xmldb/" + name; }
inline std::string Sample(const std::string& name) { return std::string(RLX_SAMPLES_DIR) + "/" + name; }

inline Property* AsProperty(IProperty* property) { return dynamic_cast<Property*>(property); }

// For driving the reader's callbacks directly, as the parser would: elements without attributes.
class NoAttributes : public xercesc::AttributeList {
public:
    XMLSize_t getLength() const override { return 0; }
    const XMLCh* getName(const XMLSize_t) const override { return nullptr; }
    const XMLCh* getType(const XMLSize_t) const override { return nullptr; }
    const XMLCh* getValue(const XMLSize_t) const override { return nullptr; }
    const XMLCh* getType(const XMLCh* const) const override { return nullptr; }
    const XMLCh* getValue(const XMLCh* const) const override { return nullptr; }
    const XMLCh* getValue(const char* const) const override { return nullptr; }
};

// Xerces keeps its memory manager only while at least one Initialize is not yet matched by
// a Terminate.
inline bool XercesInitialized() { return xercesc::XMLPlatformUtils::fgMemoryManager != nullptr; }

inline std::vector<std::string> ListedNames(const PropertyDB& db) {
    std::vector<std::string> names;
    for (IProperty* property : db.Properties()) names.emplace_back(property->GetName());
    return names;
}

// Borrowed children; the references taken by the fetch are given back at once.
inline std::vector<IProperty*> Children(IProperty* property) {
    std::vector<IProperty*> children(property->GetNumSubProperties());
    if (!children.empty()) property->GetSubProperties(children.data());
    for (IProperty* child : children) child->Release();
    return children;
}

inline std::vector<std::string> ChildNames(IProperty* property) {
    std::vector<std::string> names;
    for (IProperty* child : Children(property)) names.emplace_back(child->GetName());
    return names;
}

inline IProperty* ChildNamed(IProperty* property, const std::string& name) {
    for (IProperty* child : Children(property)) {
        if (name == child->GetName()) return child;
    }
    return nullptr;
}

// "Name:kind=value" with the children in brackets; flags as "!disabled" and "!readonly".
inline std::string DescribeTree(IProperty* property) {
    std::ostringstream out;
    out << property->GetName() << ':';
    if (auto* boolean = dynamic_cast<BooleanProperty*>(property)) {
        out << "bool=" << (boolean->GetValue() ? "true" : "false");
    } else if (auto* integer = dynamic_cast<IntegerProperty*>(property)) {
        out << "int=" << integer->GetValue();
    } else if (auto* location64 = dynamic_cast<LocationProperty2*>(property)) {
        std::uint32_t page = 0;
        out << "loc64=0x" << std::hex << location64->GetValue64(page).GetAddress() << std::dec;
    } else if (auto* location = dynamic_cast<LocationProperty*>(property)) {
        std::uint32_t page = 0;
        out << "loc=0x" << std::hex << location->GetValue(page) << std::dec;
    } else if (auto* text = dynamic_cast<StringProperty*>(property)) {
        out << "string=" << text->GetValue();
    } else {
        out << "plain";
    }
    if (property->IsDisabled()) out << "!disabled";
    if (!property->IsEditable()) out << "!readonly";
    const std::vector<IProperty*> children = Children(property);
    if (!children.empty()) {
        out << '[';
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (i != 0) out << ", ";
            out << DescribeTree(children[i]);
        }
        out << ']';
    }
    return out.str();
}

// Xerces 3.2 loses the 64-byte buffer of a reader whose first read fails (a directory given
// as the file). Allocations made inside this scope are not reported as leaks.
class XercesReaderLeakAllowed {
public:
#if defined(__SANITIZE_ADDRESS__)
    XercesReaderLeakAllowed() { __lsan_disable(); }
    ~XercesReaderLeakAllowed() { __lsan_enable(); }
#else
    XercesReaderLeakAllowed() {}
    ~XercesReaderLeakAllowed() {}
#endif
    XercesReaderLeakAllowed(const XercesReaderLeakAllowed&) = delete;
    XercesReaderLeakAllowed& operator=(const XercesReaderLeakAllowed&) = delete;
};

struct CaughtError {
    bool thrown = false;
    std::string text;
    korvaErrorIF::Severity_Type severity = korvaErrorIF::Information;
};

inline CaughtError CatchKorvaError(const std::function<void()>& action) {
    CaughtError caught;
    try {
        action();
    } catch (korvaError& error) {
        caught.thrown = true;
        caught.text = error.GetErrorText();
        caught.severity = error.GetSeverity();
    }
    return caught;
}

// Holds one reference for the test and gives it back at the end of the scope.
class Held {
public:
    explicit Held(IProperty* property) : m_property(property) {}
    ~Held() {
        if (m_property != nullptr) m_property->Release();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    IProperty* get() const { return m_property; }
    IProperty* operator->() const { return m_property; }

private:
    IProperty* m_property;
};

}  // namespace xmldb_test
