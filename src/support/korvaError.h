// The exception object of the readers: thrown and caught by value.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Export.h"

namespace Kw {
namespace Mbr {
namespace Korva {

class korvaError;

class RLX_API korvaErrorIF {
public:
    enum Severity_Type : std::int32_t { Information = 0, Warning = 1, Error = 2, Internal = 3, Fatal = 4 };

    virtual const char* GetTitle() = 0;
    virtual void SetTitle(const char* title) = 0;
    virtual Severity_Type GetSeverity() const = 0;
    virtual void SetSeverity(Severity_Type severity) = 0;
    virtual const char* GetErrorText() const = 0;
    virtual void SetErrorText(const char* text) = 0;
    virtual const char* GetDetailedText() = 0;
    virtual void AddDetailedInfo(const char* text) = 0;
    virtual void PushText(const char* text) = 0;
    virtual void Delete() = 0;
    virtual ~korvaErrorIF();
};

class RLX_API korvaError : public korvaErrorIF {
public:
    static const char* DefaultTitle[5];
    static const char* const UnitializedText;

    korvaError();
    explicit korvaError(Severity_Type severity);
    korvaError(const char* text, Severity_Type severity);
    korvaError(const std::string& text, Severity_Type severity);
    korvaError(const char* title, const char* text, Severity_Type severity);
    korvaError(const std::string& title, const std::string& text, Severity_Type severity);
    korvaError(const korvaError& other);
    korvaError& operator=(const korvaError& other);
    ~korvaError() override;

    const char* GetTitle() override;
    void SetTitle(const char* title) override;
    void SetTitle(const std::string& title);
    Severity_Type GetSeverity() const override;
    void SetSeverity(Severity_Type severity) override;
    const char* GetErrorText() const override;
    void SetErrorText(const char* text) override;
    void SetErrorText(const std::string& text);
    const char* GetDetailedText() override;
    void AddDetailedInfo(const char* text) override;
    void AddDetailedInfo(const std::string& text);
    void PushText(const char* text) override;
    void PushText(const std::string& text);
    void Delete() override;

protected:
    virtual void Copy(const korvaError& other);

private:
    std::string m_title;
    std::string m_errorText;
    std::string m_detailedText;  // built once, on the first non-empty request
    std::vector<std::string> m_details;
    Severity_Type m_severity;
};

}  // namespace Korva
}  // namespace Mbr
}  // namespace Kw
