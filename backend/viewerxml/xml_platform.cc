#include "backend/viewerxml/xml_platform.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace vexa {

namespace {

void initialiseLibrary() { xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale); }

void (*currentInitialisation)() = initialiseLibrary;

}  // namespace

XmlPlatform::XmlPlatform() { currentInitialisation(); }

XmlPlatform::~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }

void installXmlInitialisation(void (*initialise)()) {
    currentInitialisation = initialise != nullptr ? initialise : initialiseLibrary;
}

}  // namespace vexa
