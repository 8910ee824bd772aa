set(VERSION 1.4)
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
