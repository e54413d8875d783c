# The control widgets of the platform layer, without extension.
set(BEXLOW_PLATFORM_WIDGETS
  platform/Colours
  platform/CWGraph
  platform/CWGraphAccess
  platform/CWGraphCursors
  platform/CWGraphCurve
  platform/CWGraphExport
  platform/CWGraphInteraction
  platform/CWGraphLook
  platform/CWGraphOverlay
  platform/CWGraphReadOut
  platform/CWGraphSeries
  platform/CWGraphView
  platform/CWKnob
  platform/CWNumEdit
  platform/CWSlide
  platform/Instrument)
