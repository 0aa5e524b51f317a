// Has the headers read that cmake/VexaTargets.cmake names.
