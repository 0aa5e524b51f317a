# Writes results of every kind with bindings/r/vexa.R; check_r.py looks at what came of them.
source(commandArgs(trailingOnly = TRUE)[1])
folder <- commandArgs(trailingOnly = TRUE)[2]

people <- data.frame(region = c("N", "N", "S", "S", "S"), sex = c("f", "m", "f", "m", "m"), age = c(20, 35, 50, 41, 33),
                     income = c(1.5, 2.5, NA, 0.1 + 0.2, 1e-20), when = as.Date("2026-03-05") + 0:4,
                     kind = factor(c("b", "a", "b", "a", "a")), fine = c(TRUE, FALSE, NA, TRUE, TRUE))
people$moment <- as.POSIXct("2026-03-05 10:07:09", tz = "Europe/Berlin") + 0:4
people$span <- as.difftime(c(30, 1, 2, 3, 4), units = "hours")
three <- xtabs(~ region + sex + kind, people)

png <- file.path(folder, "plot.png")
png(png)
plot(1:3)
invisible(dev.off())

results <- vexa_results("r",
  vexa_section("Frames", command = "Means",
    vexa_table(people, title = "Frame", caption = "Caf\u00e9 \"x\" \\ \u6f22", formats = c(income = "F8.2"),
               footnotes = "One.", roles = c(age = "mean")),
    list(vexa_table(table(people$region), title = "One dimension"),
         vexa_table(three, title = "Three dimensions", columns = 2)),
    vexa_table(ftable(three, row.vars = c("kind", "region")), title = "Flat"),
    vexa_table(matrix(c(1, 2, Inf, NaN), 2, dimnames = list(NULL, c("a", "b"))), title = "Matrix"),
    vexa_table(c(x = 1, y = 2), title = "Vector"),
    vexa_table(people[0, c("age", "sex")], title = "Without rows"),
    vexa_table(aggregate(age ~ sex, people, function(x) c(mean = mean(x), n = length(x))), title = "Columns in a column"),
    vexa_table(summary(c(1, 2, 6)), title = "Summary")),
  vexa_model(lm(age ~ sex + region, people)),
  vexa_model(glm(fine ~ age, binomial, people), label = "Logit"),
  vexa_plot({ boxplot(age ~ sex, people); title("Ages") }, alternative_text = "Two boxes.", label = "Boxes"),
  vexa_chart(png, alternative_text = "Three points."),
  vexa_heading("Heading"),
  vexa_text(c("Two lines", "of text.\a")))
vexa_write(results, file.path(folder, "r.json"))

refused <- function(expression) inherits(try(expression, silent = TRUE), "try-error")
stopifnot(refused(vexa_plot({ plot(1); plot(2) })), is.null(dev.list()))
stopifnot(refused(vexa_table(mean)), refused(vexa_results("x", "text")), refused(vexa_model(people)),
          vexa_base64(charToRaw("ab")) == "YWI=", vexa_base64(charToRaw("abc")) == "YWJj", vexa_base64(charToRaw("a")) == "YQ==")
