// The XML library for as long as a command works with it.
#pragma once

namespace vexa {

/// Initialises the XML library with its default locale, and lets go of it at the end; both are counted, so it
/// may be held several times. The constructor lets the library's own exceptions pass, which are no standard
/// exceptions.
class XmlPlatform {
  public:
    XmlPlatform();
    ~XmlPlatform();
    XmlPlatform(const XmlPlatform&) = delete;
    XmlPlatform& operator=(const XmlPlatform&) = delete;
};

/// Makes `initialise` what the constructor of `XmlPlatform` calls, so that tests can make it fail; null
/// brings back the library's own initialisation. It must initialise the library once more, or throw.
void installXmlInitialisation(void (*initialise)());

}  // namespace vexa
