// The library that reads PDF, as it is included here and nowhere else.
#pragma once

// Its header of JSON holds a list of a class within that class, which clang does not compile as C++20. What
// needs it is not called here.
#define JSON_HH
class JSON;

// It shares what it hands out as the standard library does.
#ifndef POINTERHOLDER_TRANSITION
#define POINTERHOLDER_TRANSITION 4
#endif

#include <functional>
#include <list>
#include <memory>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <set>
