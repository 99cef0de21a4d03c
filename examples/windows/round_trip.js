// Markup to RTF, back to markup, and the runs of the text. Run by cscript, once the component is registered.
var fonts = new ActiveXObject("QEL.QELIndexFonts"), colors = new ActiveXObject("QEL.QELIndexColors");
var parser = new ActiveXObject("QEL.RTFParser"), decoder = new ActiveXObject("QEL.StyleDecoder");
parser.Lossless = true;
var rtf = parser.QELToRTF("Hello /b1world/b0/nl", fonts, colors);
var markup = decoder.QELText = parser.RTFToQEL(rtf, fonts, colors);
WScript.Echo(markup);
for (var run = 1; run <= decoder.SegmentCount; run++) {
  WScript.Echo(decoder.SegmentText(run) + ": " + decoder.SegmentStyle(run).Bold);
}
