#include "SaxParseSteps.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace TargetOperations {

namespace {

SaxParseSteps* g_installedSteps = nullptr;

}  // namespace

SaxParseSteps::~SaxParseSteps() = default;

void SaxParseSteps::Initialize() {
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale);
}

void SaxParseSteps::Parse(xercesc::SAXParser& parser, const char* fileName) { parser.parse(fileName); }

void SaxParseSteps::Terminate() { xercesc::XMLPlatformUtils::Terminate(); }

SaxParseSteps& CurrentSaxParseSteps() {
    static SaxParseSteps defaults;
    return g_installedSteps != nullptr ? *g_installedSteps : defaults;
}

void InstallSaxParseSteps(SaxParseSteps* steps) { g_installedSteps = steps; }

}  // namespace TargetOperations
