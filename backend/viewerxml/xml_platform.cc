#include "backend/viewerxml/xml_platform.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace vexa {

XmlPlatform::XmlPlatform() { xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale); }

XmlPlatform::~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }

}  // namespace vexa
