// Commands with selection groups and measured values, parsed as their users write them.

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "tests/unit/syntax/example_grammars.h"
#include "tests/unit/syntax/parse_picture.h"

namespace vexa {
namespace {

struct RealCase {
    std::string text;
    std::string outcome;
};

void PrintTo(const RealCase& each, std::ostream* out) { *out << each.text; }

class ModifyTest : public testing::TestWithParam<RealCase> {};

TEST_P(ModifyTest, Parses) { EXPECT_EQ(parsed(modifyGrammar(), GetParam().text), GetParam().outcome); }

INSTANTIATE_TEST_SUITE_P(
    Groups, ModifyTest,
    testing::Values(
        RealCase{"NAME=* DEBUG /REPORT PRINTREPORT=yes /SELECT ALL EXCEPT=[TABLES, charts]",
                 "{NAME=*; DEBUG}REPORT{PRINTREPORT=yes}<SELECT{ALL; EXCEPT=TABLES charts}>"},
        RealCase{"NAME=ALL SELECT TABLES", "{NAME=ALL}<SELECT{TABLES}>"},
        RealCase{"SELECT TABLES IF COMMANDS=['Means(1,3)' LAST] LABELS=[BEGINS('a' 'b') EXACT('c')] "
                 "VISIBLEONLY=YES",
                 "{}<SELECT{TABLES}IF{COMMANDS='Means(1,3)' LAST; LABELS=BEGINS ( 'a' 'b' ) EXACT ( 'c' ); "
                 "VISIBLEONLY=YES}>"},
        RealCase{"/SELECT TEXTS /TEXTS TEXT='a' /SELECT TEXTS TEXTS TEXT='b'",
                 "{}<SELECT{TEXTS}TEXTS{TEXT='a'}><SELECT{TEXTS}TEXTS{TEXT='b'}>"},
        RealCase{"/SELECT LOGS /REPORT PRINTREPORT=NO /DELETEOBJECT",
                 "{}REPORT{PRINTREPORT=NO}<SELECT{LOGS}DELETEOBJECT{}>"},
        RealCase{"/SELECT LOGS /DELETEOBJECT DELETE /TABLE", "{}<SELECT{LOGS}DELETEOBJECT{DELETE}TABLE{}>"},
        RealCase{"/SELECT /IF", "{}<SELECT{}IF{}>"},
        RealCase{"/SELECT TABLES /IF VISIBLEONLY TABLE TRANSPOSE=YES",
                 "{}<SELECT{TABLES}IF{VISIBLEONLY}TABLE{TRANSPOSE=YES}>"},
        RealCase{"/SELECT ALL EXCEPT=FOO", "{}<SELECT{ALL; EXCEPT=FOO}>"},
        RealCase{"/SELECT ALL EXCEPT=[FOO 'x']", "{}<SELECT{ALL; EXCEPT=FOO 'x'}>"},
        RealCase{"/SELECT ALL EXCEPT TABLES",
                 "20: EXCEPT needs a value: one or more of CHARTS, HEADINGS, LOGS, TABLES, TEXTS or NOTES. "
                 "Without \"=\", \"TABLES\" is read as the next keyword; if it is the value, write "
                 "EXCEPT=TABLES."},
        RealCase{"/SELECT TABLES TABLES",
                 "16: TABLES is given twice; it can be given once in subcommand SELECT."},
        RealCase{
            "/SELECT TABELS",
            "9: Found \"TABELS\" where a keyword of subcommand SELECT was expected. Did you mean TABLES?"},
        RealCase{"/SELECT TABLES=1", "15: TABLES takes no value. Leave out \"=\" and what follows it."},
        RealCase{"/SELECT TABLES, LOGS",
                 "15: Found \",\" where a keyword of subcommand SELECT was expected. It takes ALL, CHARTS, "
                 "HEADINGS, LOGS, "
                 "TABLES, TEXTS, NOTES or EXCEPT."},
        RealCase{"NAME=a", "7: Subcommand SELECT is missing: OUTPUT MODIFY needs at least one."},
        RealCase{"/DELETEOBJECT /SELECT ALL",
                 "2: Subcommand DELETEOBJECT comes before the first SELECT. Write the SELECT that it "
                 "belongs to before it."},
        RealCase{"/SELECT ALL /TABLE /TABLE", "21: Subcommand TABLE is given twice; it can be given once."},
        RealCase{"/SELECT ALL /TABLE /SELECT LOGS /TABLE", "{}<SELECT{ALL}TABLE{}><SELECT{LOGS}TABLE{}>"}));

INSTANTIATE_TEST_SUITE_P(
    Values, ModifyTest,
    testing::Values(
        RealCase{
            "/SELECT ALL /TABLECELLS SELECT=['Total' COUNT POSITION(2 3)] /TABLECELLS SELECT=[BODY] SELECT",
            "{}<SELECT{ALL}TABLECELLS{SELECT=[ 'Total' COUNT POSITION ( 2 3 ) ]}TABLECELLS{SELECT=[ BODY ]}>"
            "<SELECT{}>"},
        RealCase{"/SELECT ALL /TABLECELLS SELECT=['Total' COUNT POSITION(2,3)] STYLE=BOLD, ITALIC "
                 "/TABLECELLS SELECT=[BODY]",
                 "{}<SELECT{ALL}TABLECELLS{SELECT=[ 'Total' COUNT POSITION ( 2 , 3 ) ]; STYLE=BOLD ITALIC}"
                 "TABLECELLS{SELECT=[ BODY ]}>"},
        RealCase{
            "/SELECT ALL /TABLECELLS SELECT=[BODY SELECTCONDITION=[>= -10] COLUMNWIDTH=POINTS(0.5) "
            "TEXTCOLOR=RGB(1 2 3)",
            "{}<SELECT{ALL}TABLECELLS{SELECT=[ BODY; SELECTCONDITION=[ >= -10 ]; COLUMNWIDTH=POINTS ( 0.5 ); "
            "TEXTCOLOR=RGB ( 1 2 3 )}>"},
        RealCase{"/SELECT ALL /TABLECELLS SELECTCONDITION=ALL REPLACE=-5 FONTSIZE=0",
                 "65: FONTSIZE takes a number of at least 1. Found \"0\"."},
        RealCase{"/SELECT ALL /TABLECELLS SELECT=[BODY] SELECT=[COUNT]",
                 "39: SELECT is given twice; it can be given once in subcommand TABLECELLS."},
        RealCase{"/SELECT ALL /TABLECELLS SELECTCONDITION=BOTTOM(x)",
                 "{}<SELECT{ALL}TABLECELLS{SELECTCONDITION=BOTTOM ( x )}>"},
        RealCase{"/SELECT ALL /TABLECELLS SELECTCONDITION TOP 0",
                 "45: TOP takes a number of at least 1. Found \"0\"."},
        RealCase{"/SELECT ALL /TEXTS FONTSIZE='x'", "{}<SELECT{ALL}TEXTS{FONTSIZE='x'}>"},
        RealCase{"/SELECT ALL /TABLE SORT(COLPOSITION=x COLLABEL) SORTDIRECTION=OTHER",
                 "{}<SELECT{ALL}TABLE{SORT=( COLPOSITION = x COLLABEL ); SORTDIRECTION=OTHER}>"},
        RealCase{"/SELECT ALL /TABLE SORT SORTDIRECTION=DESCENDING SELECTEDLAYER=[ALL LAST 'a' -1]",
                 "{}<SELECT{ALL}TABLE{SORT; SORTDIRECTION=DESCENDING; SELECTEDLAYER=[ ALL LAST 'a' - 1 ]}>"},
        RealCase{"/SELECT ALL /IF INSTANCES=[1, LAST -2] SUBTYPES=['a','b']",
                 "{}<SELECT{ALL}IF{INSTANCES=1 , LAST -2; SUBTYPES='a' 'b'}>"},
        RealCase{"/SELECT ALL /IF INSTANCES=LAST",
                 "27: Write the value of INSTANCES in square brackets: INSTANCES=[...]. Found \"LAST\"."},
        RealCase{"/SELECT ALL /OBJECTPROPERTIES SIZE=POINTS(10, -5) VISIBLE NO",
                 "{}<SELECT{ALL}OBJECTPROPERTIES{SIZE=POINTS ( 10 , -5 ); VISIBLE=NO}>"},
        RealCase{"/SELECT ALL /OBJECTPROPERTIES SIZE=FEET(1 1)",
                 "36: SIZE takes PERCENT, CENTIMETERS, INCHES or POINTS with its value, such as "
                 "PERCENT(...). Found "
                 "\"FEET\"."}));

class ExportTest : public testing::TestWithParam<RealCase> {};

TEST_P(ExportTest, Parses) { EXPECT_EQ(parsed(exportGrammar(), GetParam().text), GetParam().outcome); }

INSTANTIATE_TEST_SUITE_P(
    Formats, ExportTest,
    testing::Values(
        RealCase{"NAME=a /CONTENTS EXPORT ALL LAYERS=all", "{NAME=a}CONTENTS{EXPORT=ALL; LAYERS=all}"},
        RealCase{"/DOC DOCUMENTFILE='x' PAGESIZE=INCHES(8.5, 11) TOPMARGIN INCHES 1",
                 "{}DOC{DOCUMENTFILE='x'; PAGESIZE=INCHES ( 8.5 , 11 ); TOPMARGIN=INCHES 1}"},
        RealCase{"DOC TOPMARGIN=MM(1) PAGESIZE=MM 210 297", "{}DOC{TOPMARGIN=MM ( 1 ); PAGESIZE=MM 210 297}"},
        RealCase{"/DOC TOPMARGIN=INCHES(-1)", "23: INCHES takes a number of at least 0. Found \"-1\"."},
        RealCase{"/DOC TOPMARGIN=INCHES(0)", "{}DOC{TOPMARGIN=INCHES ( 0 )}"},
        RealCase{"/REPORT EXCLUDE=TEXTS LOGS URL=('http://a' 'A', 'http://b' 'B')",
                 "{}REPORT{EXCLUDE=TEXTS LOGS; URL=( 'http://a' 'A' , 'http://b' 'B' )}"},
        RealCase{"/TEXT COLUMNWIDTH AUTOFIT ROWBORDER='-'", "{}TEXT{COLUMNWIDTH=AUTOFIT; ROWBORDER='-'}"},
        RealCase{"/TEXT COLUMNWIDTH=1.5",
                 "19: COLUMNWIDTH takes a whole number of at least 0, or AUTOFIT. Found \"1.5\"."},
        RealCase{"/XLS LOCATION=STARTCELL('B2')", "{}XLS{LOCATION=STARTCELL ( 'B2' )}"},
        RealCase{"/XLS LOCATION=LASTROW", "{}XLS{LOCATION=LASTROW}"},
        RealCase{"/XLS LOCATION STARTCELL 'B2'", "{}XLS{LOCATION=STARTCELL 'B2'}"},
        RealCase{"/EPS WIDTH=PERCENT(200)", "{}EPS{WIDTH=PERCENT ( 200 )}"},
        RealCase{"/EPS WIDTH PERCENT 0", "20: PERCENT takes a number above 0 and at most 200. Found \"0\"."},
        RealCase{"/EPS WIDTH=POINTS(0.5)", "{}EPS{WIDTH=POINTS ( 0.5 )}"},
        RealCase{"/BMP PERCENTSIZE=201", "{}BMP{PERCENTSIZE=201}"},
        RealCase{"/BMP PERCENTSIZE", "{}BMP{PERCENTSIZE}"},
        RealCase{"/BMB PERCENTSIZE=1",
                 "2: Found \"BMB\" where a subcommand of OUTPUT EXPORT was expected. Did you mean BMP?"}));

}  // namespace
}  // namespace vexa
