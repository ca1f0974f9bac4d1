#pragma once

#include <string>

#include "../support/Export.h"

namespace TargetOperations {

class RLX_API NameAndDescription {
public:
    NameAndDescription(const std::string& name, const std::string& description);
    NameAndDescription(const NameAndDescription& other);
    NameAndDescription& operator=(const NameAndDescription& other);
    ~NameAndDescription();

    const std::string& Name() const;
    const std::string& Description() const;
    void SetName(const char* name);
    void SetDescription(const char* description);

private:
    std::string m_name;
    std::string m_description;
};

}  // namespace TargetOperations
