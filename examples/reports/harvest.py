"""Harvests: every crop by year and region, every region by crop, changes, and what was paid."""

from . import charts, figures
from .statistics_tables import commented_run, dimension, rows_by, statistics
from .tables import Category, Dimension, Group, chart, heading, log, section, table, text
from .words import Name

REGIONS = ["Coast", "Marsh", "Heath", "Plain", "Valley", "Hills", "Foothills", "Highland"]
KINDS = {"Cereals": ["Wheat", "Barley", "Rye", "Oats", "Maize"], "Roots": ["Sugar beet", "Potatoes"],
         "Other Fields": ["Rapeseed", "Peas", "Sunflowers"], "Fruit": ["Apples", "Grapes"]}
CROPS = [crop for crops in KINDS.values() for crop in crops]
PERIODS = {"1999 - 2007": range(1999, 2008), "2008 - 2015": range(2008, 2016), "2016 - 2023": range(2016, 2024)}


def read(rows):
    for row in rows:
        row["year"] = int(row["year"])
        for key in ("hectares", "tonnes"):
            row[key] = int(row[key])
        row["price"] = float(row["price"])
    return rows


def amount(rows, key):
    """Hectares, tonnes, tonnes from a hectare, or worth; None where nothing grew."""
    if not rows:
        return None
    area, tonnes = sum(row["hectares"] for row in rows), sum(row["tonnes"] for row in rows)
    if key == "worth":
        return sum(row["tonnes"] * row["price"] for row in rows)
    return {"hectares": area, "tonnes": tonnes, "yield": tonnes / area}[key]


def amounts(say, shown=1):
    return Dimension(say("Amount"), [Category("yield", say("Tonnes from a Hectare"), format="F8.2"),
                                     Category("hectares", say("Hectares"), format="COMMA12.0"),
                                     Category("tonnes", say("Tonnes"), format="COMMA12.0")], shown=shown)


def crop_run(say, crop, rows, data):
    years = sorted({row["year"] for row in rows})
    cells = rows_by(rows, "year", "region")
    of_year, of_region = rows_by(rows, "year"), rows_by(rows, "region")

    def value_of(key, year, region):
        if year is None:
            return amount(rows if region is None else of_region.get((region,)), key)
        return amount(of_year.get((year,)) if region is None else cells.get((year, region)), key)

    everything = table(say("Harvest of ^1", crop), "Harvest", [dimension(say, "Year", years, total=True)],
                       [dimension(say, "Region", REGIONS, total=True)], value_of, [amounts(say)],
                       footnotes=[say("Empty: not grown there.")], printLayers="visible")
    title = say("^1: Tonnes from a Hectare", crop)
    picture = charts.lines(title, years, {say(crop): [amount(of_year[year,], "yield") for year in years]}, from_zero=True)
    return commented_run(say, say("Harvest of ^1", crop), "Harvest", data, log(f"HARVEST CROP={crop.upper()}."), everything,
                         change_table(say, crop, of_year, years), chart(title, picture, title))


def change_table(say, crop, of_year, years):
    def value_of(year, key):
        now = amount(of_year[year,], "tonnes")
        if key == "tonnes":
            return now
        if key == "price":
            return amount(of_year[year,], "worth") / now
        return figures.percent(now - amount(of_year[year - 1,], "tonnes"), amount(of_year[year - 1,], "tonnes"))

    return table(say("^1: Change from Year to Year", crop), "Change", [dimension(say, "Year", years[1:])],
                 [statistics(say, ("tonnes", "Tonnes", "COMMA12.0"), ("change", "Change in Percent", "PCT8.1", "percent"),
                             ("price", "Price of a Tonne", "DOLLAR10.2"))], value_of)


def crops_by_kind(say):
    return Dimension(say("Crop"), [Group(say(kind), [Category(crop, say(crop)) for crop in crops])
                                   for kind, crops in KINDS.items()])


def region_run(say, region, rows, data):
    by_crop = rows_by(rows, "crop")

    def value_of(crop, period, key):
        return amount([row for row in by_crop.get((crop,), []) if row["year"] in PERIODS[period]], key)

    summary = table(say("Region ^1", region), "Region", [crops_by_kind(say)],
                    [Dimension(say("Years"), [Category(period, period) for period in PERIODS]),
                     statistics(say, ("yield", "Tonnes from a Hectare", "F8.2"), ("hectares", "Hectares", "COMMA12.0"))],
                    value_of)
    return commented_run(say, say("Region ^1", region), "Regions", data, log(f"REGIONS REGION={region.upper()}."), summary)


def worth_run(say, rows, data):
    cells = rows_by(rows, "crop", "region")
    worth = table(say("Worth of All Harvests"), "Worth", [crops_by_kind(say)],
                  [dimension(say, "Region", REGIONS)], lambda crop, region: amount(cells.get((crop, region)), "worth"),
                  caption=say("All years, at the prices of each year."))
    for dimension_result in worth["columns"]:
        dimension_result["categories"] = [{"label": label, "format": "DOLLAR16.0"} for label in
                                          dimension_result["categories"]]
    by_region = rows_by(rows, "region")
    title = say("Worth by Region, in Millions")
    picture = charts.bars(title, [say(region) for region in REGIONS],
                          {say("Worth"): [amount(by_region[region,], "worth") / 1e6 for region in REGIONS]})
    return commented_run(say, say("Worth of All Harvests"), "Worth", data, log("WORTH."), worth, chart(title, picture, title))


def report(say, rows):
    rows = read(rows)
    data = ("harvest.csv", len(rows))
    by_crop, by_region = rows_by(rows, "crop"), rows_by(rows, "region")
    years = sorted({row["year"] for row in rows})
    return section(say("Harvest"), heading(say("Harvests from ^1 to ^2", Name(years[0]), Name(years[-1]))),
                   text(say("About the data"), say("Area, harvest and price of twelve crops in eight regions.")),
                   *(crop_run(say, crop, by_crop[crop,], data) for crop in CROPS),
                   *(region_run(say, region, by_region[region,], data) for region in REGIONS), worth_run(say, rows, data))
