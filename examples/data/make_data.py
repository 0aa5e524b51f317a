#!/usr/bin/env python3
"""Makes the five data sets of this folder, always the same: nobody and nothing in them exists.

usage: examples/data/make_data.py [FOLDER]      (this folder without one)

survey.csv   2,000 people of four regions: work, income, satisfaction, how they travel
climate.csv  ten weather stations, 30 years, by month
harvest.csv  twelve crops, eight regions, 25 years
trial.csv    240 patients of a clinical trial, six visits each
shop.csv     3,000 orders of a shop
"""

import csv
import datetime
import math
import pathlib
import random
import sys


class Chance:
    """Numbers that only depend on the seed: made of random(), whose sequence is the same in every version of Python."""

    def __init__(self, seed):
        self._random = random.Random(seed).random

    def normal(self, mean, deviation):
        return mean + deviation * (sum(self._random() for _ in range(12)) - 6)

    def between(self, least, greatest):
        """A whole number."""
        return least + int(self._random() * (greatest - least + 1))

    def happens(self, probability):
        return self._random() < probability

    def one_of(self, *weights):
        """A key of the pairs (key, weight), by weight."""
        place = self._random() * sum(weight for _, weight in weights)
        for key, weight in weights:
            place -= weight
            if place < 0:
                return key
        return weights[-1][0]


def limited(number, least, greatest):
    return min(max(number, least), greatest)


def person(chance, number):
    region = chance.one_of(("North", 24), ("South", 31), ("East", 20), ("West", 25))
    place = chance.one_of(("City", 45), ("Town", 33), ("Village", 22))
    sex = chance.one_of(("Female", 51), ("Male", 49))
    age = chance.between(18, 84)
    schooling = chance.one_of(("Primary", 18 + age / 4), ("Secondary", 45), ("Vocational", 30), ("University", 40 - age / 4))
    works = age < 66 and chance.happens(0.82 if sex == "Male" else 0.74)
    hours = round(limited(chance.normal(38 if sex == "Male" else 33, 6), 6, 60)) if works else None
    level = {"Primary": 1500, "Secondary": 1900, "Vocational": 2200, "University": 3100}[schooling]
    level *= {"North": 1.08, "South": 1.0, "East": 0.86, "West": 1.04}[region]
    income = round(limited(chance.normal(level * (hours or 28) / 36, 420), 450, 9000), -1)
    travel = chance.one_of(("Car", 50 if place == "Village" else 30), ("Bicycle", 18 if age < 60 else 9),
                           ("Train or bus", 30 if place == "City" else 12), ("On foot", 16 if place == "City" else 8))
    happy = round(limited(chance.normal(3.3 + (income - 2000) / 2600 + (0.2 if travel == "Bicycle" else 0), 0.9), 1, 5))
    health = round(limited(chance.normal(4.6 - age / 60, 0.8), 1, 5))
    return [number, region, place, sex, age, schooling, "Yes" if works else "No", hours,
            None if chance.happens(0.06) else int(income), travel, None if chance.happens(0.02) else happy, health,
            chance.one_of((0, 60 - age / 2), (1, 20), (2, 18), (3, 6)), round(limited(chance.normal(1, 0.18), 0.4, 1.8), 3)]


def survey():
    chance = Chance(11)
    yield ["person", "region", "place", "sex", "age", "education", "works", "hours", "income", "travel", "satisfaction",
           "health", "children", "weight"]
    for number in range(1, 2001):
        yield person(chance, number)


STATIONS = [("Ostholm", 3, 9.4, 8.1, 62), ("Karvik", 41, 7.8, 9.5, 71), ("Lindmoor", 118, 8.9, 9.0, 58),
            ("Hohensee", 433, 8.3, 9.9, 84), ("Grauberg", 1214, 4.6, 9.2, 133), ("Tarnfeld", 276, 9.7, 10.3, 49),
            ("Westrand", 12, 10.1, 7.2, 69), ("Sonnau", 187, 11.2, 10.1, 55), ("Altbruch", 64, 9.1, 9.8, 46),
            ("Felsspitz", 2360, -1.9, 8.0, 158)]


def climate():
    chance = Chance(23)
    yield ["station", "elevation", "year", "month", "mean", "lowest", "highest", "rain", "sun", "frost_days"]
    for year in range(1994, 2024):
        warmth = chance.normal(0.034 * (year - 1994), 0.45)
        for month in range(1, 13):
            weather = chance.normal(0, 1.1)
            wet = chance.normal(1, 0.25)
            for name, elevation, level, swing, rain in STATIONS:
                season = -math.cos((month - 1) / 12 * 2 * math.pi - 0.35)
                mean = level + swing * season + warmth + weather + chance.normal(0, 0.5)
                lowest, highest = mean - chance.normal(11, 2), mean + chance.normal(12, 2)
                fall = limited(rain * (1 + 0.2 * season) * limited(wet + chance.normal(0, 0.3), 0.05, 3), 0, 600)
                sun = limited(chance.normal(150 + 85 * season - 0.25 * (fall - rain), 18), 18, 330)
                frost = round(limited(15 - 1.6 * (mean - 1), 0, 28))
                missing = chance.happens(0.004)
                # Adding 0 makes 0 of a rounded -0.
                yield [name, elevation, year, month, None if missing else round(mean, 1) + 0.0, round(lowest, 1) + 0.0,
                       round(highest, 1) + 0.0, round(fall, 1), round(sun), frost]


CROPS = [("Wheat", 820, 7.4, 190), ("Barley", 410, 6.6, 172), ("Rye", 190, 5.2, 160), ("Oats", 95, 4.6, 168),
         ("Maize", 330, 9.3, 178), ("Rapeseed", 280, 3.6, 412), ("Sugar beet", 105, 74.0, 34), ("Potatoes", 88, 41.5, 148),
         ("Peas", 46, 3.1, 240), ("Sunflowers", 31, 2.3, 395), ("Apples", 19, 28.0, 520), ("Grapes", 27, 9.8, 1150)]
LANDS = [("Coast", 0.9), ("Marsh", 0.7), ("Heath", 0.6), ("Plain", 1.7), ("Valley", 1.2), ("Hills", 0.8), ("Foothills", 0.6),
         ("Highland", 0.3)]
DRY_YEARS = {2003: 0.86, 2006: 0.93, 2018: 0.78, 2019: 0.91, 2022: 0.88}


def harvest():
    chance = Chance(37)
    yield ["year", "region", "crop", "hectares", "tonnes", "price"]
    for year in range(1999, 2024):
        for number, (crop, thousands, per_hectare, price) in enumerate(CROPS):
            paid = price * (1 + 0.016 * (year - 1999)) * limited(chance.normal(1, 0.12), 0.6, 1.6)
            for place, (region, share) in enumerate(LANDS):
                if (number in (8, 9, 10, 11)) and (number + place) % 3 == 0:
                    continue  # does not grow there
                area = thousands * 1000 * share / 6.8 * limited(chance.normal(1, 0.07), 0.5, 1.5)
                good = DRY_YEARS.get(year, 1.0) * (1 + 0.006 * (year - 1999)) * limited(chance.normal(1, 0.09), 0.5, 1.4)
                yield [year, region, crop, int(round(area, -1)), int(round(area * per_hectare * good, -1)), round(paid, 2)]


VISITS = [("Screening", -14), ("Start", 0), ("Week 4", 28), ("Week 8", 56), ("Week 16", 112), ("Week 24", 168)]


def trial():
    chance = Chance(53)
    yield ["patient", "site", "arm", "sex", "age", "visit", "date", "systolic", "diastolic", "pulse", "pain", "weight",
           "adverse", "taken"]
    for patient in range(1, 241):
        site = chance.one_of(("A", 5), ("B", 4), ("C", 4), ("D", 3))
        arm = ("Placebo", "Low dose", "High dose")[patient % 3]
        sex = chance.one_of(("Female", 55), ("Male", 45))
        age = chance.between(31, 79)
        begin = datetime.date(2022, 1, 10) + datetime.timedelta(days=chance.between(0, 260))
        pressure, ache = chance.normal(151, 9), chance.normal(6.1, 1.2)
        weight = chance.normal(84 if sex == "Male" else 71, 10)
        stays = 6 if chance.happens(0.86) else chance.between(3, 5)
        for number, (visit, day) in enumerate(VISITS[:stays]):
            effect = {"Placebo": 2.5, "Low dose": 8.5, "High dose": 13}[arm] * (1 - math.exp(-max(day, 0) / 40))
            upper = round(chance.normal(pressure - effect, 6))
            event = number > 1 and chance.happens({"Placebo": 0.07, "Low dose": 0.1, "High dose": 0.19}[arm])
            date = begin + datetime.timedelta(days=day + (chance.between(-3, 3) if number else 0))
            yield [f"{site}{patient:03}", site, arm, sex, age, visit, date.isoformat(), upper,
                   round(chance.normal(upper * 0.6, 4)), round(chance.normal(74, 8)),
                   round(limited(chance.normal(ache - effect / 6, 0.9), 0, 10), 1), round(chance.normal(weight, 0.9), 1),
                   chance.one_of(("Headache", 5), ("Dizziness", 4), ("Nausea", 3), ("Rash", 1)) if event else "",
                   None if number < 2 else round(limited(chance.normal(94, 6), 40, 100), 1)]


ARTICLES = [("Kitchen", "Pan", 34.5), ("Kitchen", "Kettle", 29.0), ("Kitchen", "Knife", 18.9), ("Kitchen", "Bowl", 9.5),
            ("Garden", "Spade", 24.9), ("Garden", "Hose", 31.0), ("Garden", "Seeds", 3.2), ("Garden", "Lantern", 14.5),
            ("Office", "Lamp", 42.0), ("Office", "Notebook", 4.8), ("Office", "Chair", 129.0), ("Office", "Shelf", 79.0),
            ("Sports", "Ball", 16.0), ("Sports", "Mat", 22.5), ("Sports", "Rucksack", 58.0), ("Sports", "Tent", 145.0)]


def shop():
    chance = Chance(71)
    yield ["order", "time", "channel", "customer", "country", "category", "article", "quantity", "price", "discount",
           "payment", "days", "returned", "stars"]
    moment = datetime.datetime(2023, 1, 1, 6, 12, 40)
    for order in range(1, 3001):
        busy = (0.72 if moment.month in (11, 12) else 1.0) * (1.9 if moment.hour < 6 else 0.82)
        moment += datetime.timedelta(seconds=int(limited(chance.normal(11000, 5200) * busy, 60, 40000)))
        category, article, price = chance.one_of(*((row, 100 / (row[2] + 20)) for row in ARTICLES))
        channel = chance.one_of(("Web", 55), ("App", 30), ("Telephone", 8), ("Store", 7))
        customer = chance.one_of(("New", 38), ("Regular", 50), ("Business", 12))
        quantity = chance.between(1, 3) if customer != "Business" else chance.between(2, 24)
        discount = chance.one_of((0, 70), (5, 14), (10, 11), (20, 5)) + (5 if customer == "Business" else 0)
        days = chance.between(1, 9) if channel != "Store" else 0
        returned = chance.happens(0.05 + 0.012 * days * (price > 40))
        stars = round(limited(chance.normal(4.5 - 0.13 * days - 0.9 * returned, 0.7), 1, 5))
        yield [f"{order:05}", moment.isoformat(sep=" "), channel, customer,
               chance.one_of(("Inland", 74), ("Neighbours", 20), ("Overseas", 6)), category, article, quantity,
               f"{price:.2f}", discount, chance.one_of(("Card", 48), ("Invoice", 30), ("Transfer", 22)), days,
               "Yes" if returned else "No", None if chance.happens(0.35) else stars]


DATA = {"survey": survey, "climate": climate, "harvest": harvest, "trial": trial, "shop": shop}


def main(arguments):
    folder = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent
    folder.mkdir(parents=True, exist_ok=True)
    for name, rows in DATA.items():
        with open(folder / f"{name}.csv", "w", encoding="utf-8", newline="") as file:
            csv.writer(file, lineterminator="\n").writerows(rows())


if __name__ == "__main__":
    main(sys.argv[1:])
