vexa_fuzz_target(zip_archive LINKS vexa_frontend)
vexa_fuzz_target(xml_text LINKS vexa_frontend)
vexa_fuzz_target(compound_file LINKS vexa_frontend)
vexa_fuzz_target(workbook LINKS vexa_frontend)
