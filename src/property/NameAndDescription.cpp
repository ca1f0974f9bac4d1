#include "NameAndDescription.h"

namespace TargetOperations {

NameAndDescription::NameAndDescription(const std::string& name, const std::string& description)
    : m_name(name), m_description(description) {}

NameAndDescription::NameAndDescription(const NameAndDescription& other) = default;

NameAndDescription& NameAndDescription::operator=(const NameAndDescription& other) {
    if (this != &other) {
        m_name = other.m_name;
        m_description = other.m_description;
    }
    return *this;
}

NameAndDescription::~NameAndDescription() = default;

const std::string& NameAndDescription::Name() const { return m_name; }
const std::string& NameAndDescription::Description() const { return m_description; }

void NameAndDescription::SetName(const char* name) {
    if (name != nullptr) m_name = name;
}

void NameAndDescription::SetDescription(const char* description) {
    if (description != nullptr) m_description = description;
}

}  // namespace TargetOperations
