# Writes results of R in the form that `vexa import` reads: tables, models, plots and texts in sections. Base R only.
#
#   source("vexa.R")
#   results <- vexa_results("march",
#     vexa_section("Means", command = "Means",
#       vexa_table(aggregate(income ~ region, people, mean), title = "Income by region", formats = c(income = "F8.1")),
#       vexa_table(xtabs(~ region + sex + age, people), title = "People", columns = 2),
#       vexa_model(lm(income ~ age + sex, people)),
#       vexa_plot(boxplot(income ~ region, people), alternative_text = "Income rises to the north.")),
#     vexa_text("Weighted."))
#   vexa_write(results, "march.json")
#
# and then: vexa import march.vxv march.json

# A whole document. What follows its name are items, or lists of items.
vexa_results <- function(name, ...) {
  list(vexaResults = 1, name = vexa_as_text(name), items = vexa_as_items(...))
}

# A header with items of its own. With a command it is a run of that command, which OUTPUT MODIFY can select.
vexa_section <- function(label, ..., command = NULL) {
  vexa_item("header", label = vexa_as_text(label), command = command, items = vexa_as_items(...))
}

# A table of a data frame, a matrix, a table of any number of dimensions (table, xtabs, array) or a flat table (ftable).
# columns: of a table, how many of its last dimensions stand in the columns. formats: a display format such as "F8.2" for all,
# or several with the names of columns; roles: the same with mean count percent significance residual correlation median total.
vexa_table <- function(x, title = NULL, caption = NULL, label = NULL, subtype = NULL, command = NULL, formats = NULL,
                       roles = NULL, footnotes = NULL, columns = 1, look = NULL) {
  grid <- if (inherits(x, "ftable")) vexa_grid_of_ftable(x)
          else if (is.data.frame(x)) vexa_grid_of_frame(x)
          else if (is.array(x)) vexa_grid_of_array(x, columns)
          # A summary of numbers says that it is a table and has no dimensions.
          else if (is.atomic(x)) vexa_grid_of_frame(vexa_frame_of_vector(x))
          else stop("a ", class(x)[1], " is no table: give a data frame, a matrix, a table or a vector")
  grid$columns <- vexa_with_formats(grid$columns, formats, roles, grid$formats)
  vexa_item("table", label = label, command = command, subtype = subtype, title = title, caption = caption, look = look,
            rows = lapply(grid$rows, vexa_dimension), columns = lapply(grid$columns, vexa_dimension),
            cells = vexa_list(grid$cells),
            footnotes = if (length(footnotes)) vexa_list(as.list(enc2utf8(as.character(footnotes)))))
}

# A linear or generalized linear model, or its summary, as a section with its tables.
vexa_model <- function(model, label = NULL, command = "Regression") {
  fitted <- if (inherits(model, c("summary.lm", "summary.glm"))) model else summary(model)
  if (!inherits(fitted, c("summary.lm", "summary.glm"))) stop("a ", class(model)[1], " is no model of lm or glm")
  of <- paste(deparse(stats::formula(fitted$terms)), collapse = " ")
  coefficients <- as.data.frame(fitted$coefficients)
  last <- names(coefficients)[ncol(coefficients)]
  vexa_section(if (is.null(label)) of else label, command = command,
    vexa_table(vexa_quality(fitted), title = "Model", subtype = "Model Summary", caption = of,
               formats = vexa_quality_formats(fitted)),
    vexa_table(coefficients, title = "Coefficients", subtype = "Coefficients", caption = of, formats = "F8.3",
               roles = stats::setNames("significance", last)))
}

# The drawing of an expression, a page, as SVG. width, height: inches.
vexa_plot <- function(expression, alternative_text = NULL, label = NULL, command = NULL, width = 6, height = 4) {
  if (!capabilities("cairo")) stop("this R draws no SVG: it was built without cairo")
  drawn <- substitute(expression)
  surroundings <- parent.frame()
  folder <- tempfile()
  dir.create(folder)
  on.exit(unlink(folder, recursive = TRUE))
  grDevices::svg(file.path(folder, "%03d.svg"), width = width, height = height)
  number <- grDevices::dev.cur()
  tryCatch({
    value <- withVisible(eval(drawn, surroundings))
    # Plots that are objects draw themselves when they are printed.
    if (value$visible && inherits(value$value, c("trellis", "ggplot", "recordedplot"))) print(value$value)
  }, finally = grDevices::dev.off(number))
  pages <- list.files(folder, full.names = TRUE)
  if (length(pages) > 1) stop("the expression draws ", length(pages), " pages: call vexa_plot for each")
  vexa_chart(pages, alternative_text = alternative_text, label = label, command = command)
}

# A picture that is there: a file with SVG or PNG.
vexa_chart <- function(file, alternative_text = NULL, label = NULL, command = NULL) {
  bytes <- readBin(file, "raw", file.info(file)$size)
  is_png <- length(bytes) > 4 && identical(bytes[1:4], as.raw(c(0x89, 0x50, 0x4e, 0x47)))
  text <- if (!is_png) `Encoding<-`(rawToChar(bytes), "UTF-8")
  vexa_item("chart", label = label, command = command, alternativeText = alternative_text,
            svg = text, png = if (is_png) vexa_base64(bytes))
}

# A text of one line or several; a heading.
vexa_text <- function(text, label = NULL) {
  vexa_item("text", label = label, text = paste(vexa_as_text(text), collapse = "\n"))
}
vexa_heading <- function(text) vexa_item("heading", text = vexa_as_text(text))

# The results as a text of JSON, and as a file.
vexa_json <- function(results) paste0(vexa_value_json(results), "\n")
vexa_write <- function(results, file) {
  to <- file(file, "wb")
  on.exit(close(to))
  writeBin(charToRaw(enc2utf8(vexa_json(results))), to)
  invisible(file)
}

# ---- Items -----------------------------------------------------------------------------------------------------------

vexa_item <- function(type, ...) {
  entries <- list(type = type, ...)
  structure(entries[!vapply(entries, is.null, TRUE)], class = "vexa_item")
}

# Items out of items and lists of them, in their order.
vexa_as_items <- function(...) {
  items <- list()
  for (entry in list(...)) {
    if (inherits(entry, "vexa_item")) items <- c(items, list(entry))
    else if (is.list(entry)) items <- c(items, do.call(vexa_as_items, unname(entry)))
    else if (!is.null(entry)) stop("a ", class(entry)[1], " is no item: call vexa_table, vexa_text, ... for it")
  }
  vexa_list(items)
}

vexa_as_text <- function(text) enc2utf8(as.character(text))

# ---- Tables ----------------------------------------------------------------------------------------------------------
# A grid: rows and columns as lists of dimensions (label, categories), cells as a list, row by row.

vexa_axis <- function(label, categories) list(label = label, categories = as.list(vexa_as_text(categories)))

vexa_frame_of_vector <- function(x) {
  names <- if (is.null(names(x))) seq_along(x) else names(x)
  class(x) <- setdiff(oldClass(x), c("summaryDefault", "table"))
  data.frame(value = unname(x), row.names = make.unique(as.character(names)))
}

# A column that is a matrix or a frame itself, as aggregate() makes them, as the columns that it has.
vexa_plain_frame <- function(frame) {
  has_columns <- vapply(frame, function(column) length(dim(column)) > 1, TRUE)
  if (!any(has_columns)) return(frame)
  parts <- lapply(seq_along(frame), function(i) {
    if (!has_columns[i]) return(frame[i])
    part <- vexa_plain_frame(as.data.frame(frame[[i]]))
    stats::setNames(part, paste(names(frame)[i], names(part), sep = "."))
  })
  structure(do.call(c, lapply(parts, as.list)), class = "data.frame", row.names = rownames(frame))
}

vexa_grid_of_frame <- function(frame) {
  frame <- vexa_plain_frame(frame)
  columns <- lapply(frame, vexa_cells_of)
  formats <- lapply(frame, vexa_format_of)
  cells <- list()
  for (row in seq_len(nrow(frame))) cells <- c(cells, lapply(columns, function(column) column[[row]]))
  list(rows = list(vexa_axis("", rownames(frame))), columns = list(vexa_axis("", names(frame))), cells = unname(cells),
       formats = formats)
}

vexa_dimension_names <- function(x) {
  names <- dimnames(x)
  if (is.null(names)) names <- vector("list", length(dim(x)))
  labels <- names(names)
  lapply(seq_along(dim(x)), function(i) {
    categories <- if (is.null(names[[i]])) seq_len(dim(x)[i]) else names[[i]]
    vexa_axis(if (is.null(labels)) "" else labels[i], categories)
  })
}

vexa_grid_of_array <- function(x, columns) {
  # Tables of one dimension stand below each other.
  if (length(dim(x)) == 1) x <- array(x, c(dim(x), 1), c(dimnames(x), list(class(x)[1])))
  count <- length(dim(x))
  axes <- vexa_dimension_names(x)
  in_rows <- max(count - columns, 1)
  # R's first dimension varies fastest, here the last one does.
  cells <- vexa_cells_of(as.vector(aperm(unclass(x), rev(seq_len(count)))))
  list(rows = axes[seq_len(in_rows)], columns = axes[-seq_len(in_rows)], cells = cells, formats = NULL)
}

vexa_grid_of_ftable <- function(x) {
  axes <- function(variables) unname(Map(vexa_axis, names(variables), variables))
  rows <- axes(attr(x, "row.vars"))
  columns <- axes(attr(x, "col.vars"))
  list(rows = if (length(rows)) rows else list(vexa_axis("", "")),
       columns = if (length(columns)) columns else list(vexa_axis("", "")),
       cells = vexa_cells_of(as.vector(t(unclass(x)))), formats = NULL)
}

# The values of a column as cells: NULL for what is missing.
vexa_cells_of <- function(values) {
  if (inherits(values, "Date")) values <- as.numeric(values) * 86400
  else if (inherits(values, "POSIXt")) values <- as.numeric(as.POSIXct(format(values), tz = "UTC"))
  else if (inherits(values, "difftime")) values <- as.numeric(values, units = "secs")
  else if (!is.numeric(values) || is.factor(values)) values <- vexa_as_text(values)
  lapply(unname(values), function(value) {
    if (is.na(value)) NULL else if (is.numeric(value) && !is.finite(value)) as.character(value) else value
  })
}

vexa_format_of <- function(values) {
  if (inherits(values, "Date")) "DATE11"
  else if (inherits(values, "POSIXt")) "DATETIME20"
  else if (inherits(values, "difftime")) "TIME8"
}

# What is wished for a column, by its label, or for all of them.
vexa_wish <- function(wishes, label) {
  if (is.null(wishes)) NULL
  else if (is.null(names(wishes))) wishes[[1]]
  else if (label %in% names(wishes)) wishes[[label]]
}

vexa_with_formats <- function(columns, formats, roles, own) {
  last <- length(columns)
  columns[[last]]$categories <- lapply(columns[[last]]$categories, function(label) {
    format <- vexa_wish(formats, label)
    if (is.null(format) && !is.null(own)) format <- own[[label]]
    entries <- list(label = label, format = format, role = vexa_wish(roles, label))
    if (is.null(format) && is.null(entries$role)) label else entries[!vapply(entries, is.null, TRUE)]
  })
  columns
}

vexa_dimension <- function(axis) list(label = vexa_as_text(axis$label), categories = vexa_list(axis$categories))

# ---- Models ----------------------------------------------------------------------------------------------------------

vexa_quality <- function(fitted) {
  if (inherits(fitted, "summary.glm")) {
    values <- c("Null Deviance" = fitted$null.deviance, "Null df" = fitted$df.null,
                "Residual Deviance" = fitted$deviance, "Residual df" = fitted$df.residual, "AIC" = fitted$aic,
                "Dispersion" = fitted$dispersion)
  } else {
    f <- if (is.null(fitted$fstatistic)) rep(NA_real_, 3) else fitted$fstatistic
    values <- c("R Square" = fitted$r.squared, "Adjusted R Square" = fitted$adj.r.squared,
                "Residual Std. Error" = fitted$sigma, "F" = f[[1]], "df 1" = f[[2]], "df 2" = f[[3]],
                "Sig." = stats::pf(f[[1]], f[[2]], f[[3]], lower.tail = FALSE))
  }
  as.data.frame(as.list(values), optional = TRUE, row.names = "Model")
}

vexa_quality_formats <- function(fitted) {
  names <- names(vexa_quality(fitted))
  stats::setNames(ifelse(grepl("df", names), "F8.0", "F8.3"), names)
}

# ---- JSON ------------------------------------------------------------------------------------------------------------

# A list that is an array in JSON also when it is empty.
vexa_list <- function(entries) structure(unname(entries), class = "vexa_list")

vexa_text_json <- function(text) {
  text <- enc2utf8(text)
  if (!validUTF8(text)) text <- iconv(text, "UTF-8", "UTF-8", sub = "?")
  text <- gsub("\\", "\\\\", text, fixed = TRUE)
  text <- gsub("\"", "\\\"", text, fixed = TRUE)
  for (code in c(1:31, 127)) {
    character <- rawToChar(as.raw(code))
    if (grepl(character, text, fixed = TRUE)) text <- gsub(character, sprintf("\\u%04x", code), text, fixed = TRUE)
  }
  paste0("\"", text, "\"")
}

# The shortest text that gives the same number.
vexa_number_json <- function(number) {
  for (digits in c(15, 16, 17)) {
    text <- sub("^ +", "", formatC(number, digits = digits, format = "g", width = 1, decimal.mark = "."))
    if (as.numeric(text) == number) break
  }
  text
}

vexa_value_json <- function(value) {
  if (is.null(value)) return("null")
  if (inherits(value, "vexa_list") || (is.list(value) && is.null(names(value)))) {
    return(paste0("[", paste(vapply(unclass(value), vexa_value_json, ""), collapse = ","), "]"))
  }
  if (is.list(value)) {
    keys <- vapply(names(value), vexa_text_json, "")
    return(paste0("{", paste(keys, vapply(unclass(value), vexa_value_json, ""), sep = ":", collapse = ","), "}"))
  }
  if (is.logical(value)) return(if (value) "true" else "false")
  if (is.numeric(value)) vexa_number_json(value) else vexa_text_json(value)
}

vexa_base64 <- function(bytes) {
  letters <- c(LETTERS, letters, 0:9, "+", "/")
  missing <- (3 - length(bytes) %% 3) %% 3
  triples <- matrix(as.integer(c(bytes, raw(missing))), nrow = 3)
  whole <- triples[1, ] * 65536L + triples[2, ] * 256L + triples[3, ]
  coded <- rbind(whole %/% 262144L, whole %/% 4096L %% 64L, whole %/% 64L %% 64L, whole %% 64L) + 1L
  text <- letters[coded]
  if (missing > 0) text[length(text) - seq_len(missing) + 1] <- "="
  paste(text, collapse = "")
}
