# The files of the platform layer by folder. Each comment says what a folder holds.

# What the operating system does for the program: clock, ports, the serial device, files, settings, who else runs;
# and the gate through which events come one at a time.
set(BEXLOW_PLATFORM_MACHINE
  EventGate Machine Ports RealMachine System)
# What screens are made of; CWSlide, Drawn, MSComm, Timer and Winsock are headers alone.
set(BEXLOW_PLATFORM_CONTROLS
  Colours Controls CWKnob CWNumEdit Form)
# The graph control, on the plot library.
set(BEXLOW_PLATFORM_GRAPH CWGraph)

foreach(name MACHINE CONTROLS GRAPH)
  string(TOLOWER ${name} folder)
  list(TRANSFORM BEXLOW_PLATFORM_${name} PREPEND platform/${folder}/ OUTPUT_VARIABLE files)
  list(APPEND BEXLOW_PLATFORM ${files})
endforeach()
