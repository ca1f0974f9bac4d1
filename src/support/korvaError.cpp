#include "korvaError.h"

namespace Kw {
namespace Mbr {
namespace Korva {

namespace {

// Out-of-range severities fall back to Error so that the title table is never indexed outside.
korvaErrorIF::Severity_Type ValidSeverity(korvaErrorIF::Severity_Type severity) {
    if (severity < korvaErrorIF::Information || severity > korvaErrorIF::Fatal) return korvaErrorIF::Error;
    return severity;
}

}  // namespace

const char* korvaError::DefaultTitle[5] = {"Information", "Warning", "Error", "Internal", "Fatal"};
const char* const korvaError::UnitializedText = "Uninitialized error text";

korvaErrorIF::~korvaErrorIF() = default;

korvaError::korvaError() : m_errorText(UnitializedText), m_severity(Error) {}

korvaError::korvaError(Severity_Type severity) : m_errorText(UnitializedText), m_severity(ValidSeverity(severity)) {}

korvaError::korvaError(const char* text, Severity_Type severity) : m_severity(ValidSeverity(severity)) {
    if (text != nullptr) m_errorText = text;
}

korvaError::korvaError(const std::string& text, Severity_Type severity)
    : m_errorText(text), m_severity(ValidSeverity(severity)) {}

korvaError::korvaError(const char* title, const char* text, Severity_Type severity)
    : m_severity(ValidSeverity(severity)) {
    if (title != nullptr) m_title = title;
    if (text != nullptr) m_errorText = text;
}

korvaError::korvaError(const std::string& title, const std::string& text, Severity_Type severity)
    : m_title(title), m_errorText(text), m_severity(ValidSeverity(severity)) {}

korvaError::korvaError(const korvaError& other) : korvaErrorIF(other), m_severity(Error) { Copy(other); }

korvaError& korvaError::operator=(const korvaError& other) {
    if (this != &other) Copy(other);
    return *this;
}

korvaError::~korvaError() = default;

// The default title is written into the object on first read, so it stays with the severity
// the error had at that moment.
const char* korvaError::GetTitle() {
    if (m_title.empty()) m_title = DefaultTitle[m_severity];
    return m_title.c_str();
}

void korvaError::SetTitle(const char* title) {
    if (title != nullptr) m_title = title;
}

void korvaError::SetTitle(const std::string& title) { m_title = title; }

korvaErrorIF::Severity_Type korvaError::GetSeverity() const { return m_severity; }

void korvaError::SetSeverity(Severity_Type severity) { m_severity = ValidSeverity(severity); }

const char* korvaError::GetErrorText() const { return m_errorText.c_str(); }

void korvaError::SetErrorText(const char* text) {
    if (text != nullptr) m_errorText = text;
}

void korvaError::SetErrorText(const std::string& text) { m_errorText = text; }

// Built only while empty: the reporter reads it once, and later details do not show.
const char* korvaError::GetDetailedText() {
    if (m_detailedText.empty()) {
        for (std::size_t i = 0; i < m_details.size(); ++i) {
            if (i != 0) m_detailedText += '\n';
            m_detailedText += m_details[i];
        }
    }
    return m_detailedText.c_str();
}

void korvaError::AddDetailedInfo(const char* text) {
    if (text != nullptr) m_details.push_back(text);
}

void korvaError::AddDetailedInfo(const std::string& text) { m_details.push_back(text); }

// Each layer puts its own message on top and keeps the inner one as a detail.
void korvaError::PushText(const char* text) {
    if (text == nullptr) return;
    m_details.push_back(m_errorText);
    m_errorText = text;
}

void korvaError::PushText(const std::string& text) {
    m_details.push_back(m_errorText);
    m_errorText = text;
}

// Thrown and caught by value: there is never a heap object to free here.
void korvaError::Delete() {}

// The detailed-text cache stays as it was: it is neither copied nor cleared.
void korvaError::Copy(const korvaError& other) {
    m_title.clear();
    m_errorText.clear();
    m_details.clear();
    if (!other.m_title.empty()) m_title = other.m_title;
    if (!other.m_errorText.empty()) m_errorText = other.m_errorText;
    m_severity = other.m_severity;
    for (const std::string& detail : other.m_details) m_details.push_back(detail);
}

}  // namespace Korva
}  // namespace Mbr
}  // namespace Kw
