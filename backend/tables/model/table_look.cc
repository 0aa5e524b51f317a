#include "backend/tables/model/table_look.h"

namespace vexa::tables {

namespace {

/// Lines over and under the table and under its column labels, emphasis on title and labels: readable
/// everywhere.
TableLook makePlainLook() {
    TableLook look;
    look.name = "plain";
    look.area(Area::title).bold = true;
    look.area(Area::title).size = 10;
    look.area(Area::title).horizontal = HorizontalAlign::left;
    look.area(Area::caption).italic = true;
    look.area(Area::columnLabels).horizontal = HorizontalAlign::center;
    look.area(Area::columnLabels).vertical = VerticalAlign::bottom;
    look.area(Area::corner).vertical = VerticalAlign::bottom;
    look.area(Area::footnotes).size = 8;
    for (const Area area : {Area::caption, Area::corner, Area::rowLabels, Area::footnotes, Area::layers}) {
        look.area(area).horizontal = HorizontalAlign::left;
    }
    const BorderLine thin{LineStyle::thin, Color{0x808080}};
    const BorderLine medium{LineStyle::medium, Color{0x000000}};
    look.border(Border::top) = medium;
    look.border(Border::bottom) = medium;
    look.border(Border::belowHeader) = {LineStyle::thin, Color{0x000000}};
    look.border(Border::headerRows) = thin;
    look.border(Border::groupRows) = thin;
    return look;
}

}  // namespace

const std::shared_ptr<const TableLook>& plainLook() {
    static const std::shared_ptr<const TableLook> look = std::make_shared<const TableLook>(makePlainLook());
    return look;
}

}  // namespace vexa::tables
