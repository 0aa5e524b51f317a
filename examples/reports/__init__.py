"""What examples/make_results.py makes of the data: statistics, tables, charts and words."""
