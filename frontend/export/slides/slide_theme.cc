#include "frontend/export/slides/slide_parts.h"

namespace vexa::frontend {

namespace {

/// Colours that charts of the user's own take when he adds some, and fonts; the three kinds of fills, lines,
/// effects and grounds that the format asks for.
constexpr std::string_view theme =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<a:theme xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main" name="Vexa"><a:themeElements>)"
    R"(<a:clrScheme name="Vexa"><a:dk1><a:sysClr val="windowText" lastClr="000000"/></a:dk1>)"
    R"(<a:lt1><a:sysClr val="window" lastClr="FFFFFF"/></a:lt1><a:dk2><a:srgbClr val="1F3A5F"/></a:dk2>)"
    R"(<a:lt2><a:srgbClr val="EEF1F5"/></a:lt2><a:accent1><a:srgbClr val="2F6DB5"/></a:accent1>)"
    R"(<a:accent2><a:srgbClr val="C2571A"/></a:accent2><a:accent3><a:srgbClr val="3E8E41"/></a:accent3>)"
    R"(<a:accent4><a:srgbClr val="8A5AA8"/></a:accent4><a:accent5><a:srgbClr val="2A8C8C"/></a:accent5>)"
    R"(<a:accent6><a:srgbClr val="A68A1E"/></a:accent6><a:hlink><a:srgbClr val="1A5FB4"/></a:hlink>)"
    R"(<a:folHlink><a:srgbClr val="6A4C93"/></a:folHlink></a:clrScheme><a:fontScheme name="Vexa">)"
    R"(<a:majorFont><a:latin typeface="Arial"/><a:ea typeface=""/><a:cs typeface=""/></a:majorFont>)"
    R"(<a:minorFont><a:latin typeface="Arial"/><a:ea typeface=""/><a:cs typeface=""/></a:minorFont>)"
    R"(</a:fontScheme><a:fmtScheme name="Vexa"><a:fillStyleLst>)"
    R"(<a:solidFill><a:schemeClr val="phClr"/></a:solidFill><a:solidFill><a:schemeClr val="phClr"/></a:solidFill>)"
    R"(<a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:fillStyleLst><a:lnStyleLst>)"
    R"(<a:ln w="6350"><a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:ln>)"
    R"(<a:ln w="12700"><a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:ln>)"
    R"(<a:ln w="19050"><a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:ln></a:lnStyleLst>)"
    R"(<a:effectStyleLst><a:effectStyle><a:effectLst/></a:effectStyle><a:effectStyle><a:effectLst/></a:effectStyle>)"
    R"(<a:effectStyle><a:effectLst/></a:effectStyle></a:effectStyleLst><a:bgFillStyleLst>)"
    R"(<a:solidFill><a:schemeClr val="phClr"/></a:solidFill><a:solidFill><a:schemeClr val="phClr"/></a:solidFill>)"
    R"(<a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:bgFillStyleLst></a:fmtScheme></a:themeElements>)"
    R"(<a:objectDefaults/><a:extraClrSchemeLst/></a:theme>)";

}  // namespace

std::string slideTheme() { return std::string(theme); }

}  // namespace vexa::frontend
