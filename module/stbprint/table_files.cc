#include "module/stbprint/table_files.h"

#include <algorithm>

#include "backend/text/character_set.h"

namespace vexa {

namespace {

/// Cuts before the last backslash, or slash where `slashes` is true; a trail byte of a character is neither.
void cutAtLastSeparator(std::string& path, bool slashes) {
    const char* last = nullptr;
    for (const char* at = path.c_str(); *at != '\0';) {
        const int length = VEXAMBmbclen_A(at);
        if (length == 1 && (*at == '\\' || (slashes && *at == '/'))) {
            last = at;
        }
        at += length > 0 ? length : 1;
    }
    if (last != nullptr) {
        path.resize(static_cast<std::size_t>(last - path.c_str()));
    }
}

}  // namespace

const std::array<std::string_view, 94> kStringTableFiles = {
    "agrcoef.xlf",  "avgtabs.xlf",  "barmaps.xlf",  "bartabs.xlf",   "binomtst.xlf",  "boxplots.xlf",
    "calibr.xlf",   "cellmean.xlf", "chisqtst.xlf", "clustctr.xlf",  "clusthrc.xlf",  "codelist.xlf",
    "compmean.xlf", "corrmat.xlf",  "corrpart.xlf", "covmodel.xlf",  "crosscnt.xlf",  "curvefit.xlf",
    "dataview.xlf", "dictlist.xlf", "discrim.xlf",  "distfit.xlf",   "distmat.xlf",   "effsize.xlf",
    "exportdt.xlf", "expsmth.xlf",  "extremes.xlf", "facanal.xlf",   "filelist.xlf",  "forecast.xlf",
    "gammareg.xlf", "groupavg.xlf", "histogrm.xlf", "homogen.xlf",   "imputem.xlf",   "intercor.xlf",
    "itemanal.xlf", "lagplots.xlf", "lifetabs.xlf", "linreg.xlf",    "listrows.xlf",  "logitreg.xlf",
    "loglinr.xlf",  "meancomp.xlf", "medians.xlf",  "mergefil.xlf",  "missanal.xlf",  "mixedmod.xlf",
    "multresp.xlf", "nearnbr.xlf",  "nonlinrg.xlf", "ordreg.xlf",    "outactiv8.xlf", "outclose.xlf",
    "outcomnt.xlf", "outctrl.xlf",  "outdisp.xlf",  "outexport.xlf", "outframe.xlf",  "outmodify.xlf",
    "outname.xlf",  "outnew.xlf",   "outopen.xlf",  "outsave.xlf",   "paircomp.xlf",  "pathmod.xlf",
    "pcaload.xlf",  "pivotlog.xlf", "platform.xlf", "poisreg.xlf",   "powersmp.xlf",  "probitrg.xlf",
    "quantreg.xlf", "ranktest.xlf", "ratiotab.xlf", "regtree.xlf",   "relicoef.xlf",  "repmeas.xlf",
    "rowstats.xlf", "scatplot.xlf", "seasonal.xlf", "session.xlf",   "sortrows.xlf",  "spectral.xlf",
    "stbprint.xlf", "survhaz.xlf",  "synparse.xlf", "timeplot.xlf",  "twostage.xlf",  "unicount.xlf",
    "varcomps.xlf", "vexaprog.xlf", "viewxml.xlf",  "weightls.xlf",
};

std::string baseFolder(std::string languagePath) {
    cutAtLastSeparator(languagePath, true);
    cutAtLastSeparator(languagePath, false);
    return languagePath;
}

bool leadsOutside(std::string_view part) {
    constexpr std::string_view separators = "/\\";
    const std::string text = toUtf8(part);
    if (text.find_first_of(separators) == 0 || (text.size() > 1 && text[1] == ':')) return true;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, from), text.size());
        if (std::string_view(text).substr(from, end - from) == "..") return true;
        from = end + 1;
    }
    return false;
}

}  // namespace vexa
