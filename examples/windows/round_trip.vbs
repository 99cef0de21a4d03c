' Markup to RTF, back to markup, and the runs of the text. Run by cscript, once the component is registered.
Set fonts = CreateObject("QEL.QELIndexFonts")
Set colors = CreateObject("QEL.QELIndexColors")
Set parser = CreateObject("QEL.RTFParser")
parser.Lossless = True
rtf = parser.QELToRTF("Hello /b1world/b0/nl", fonts, colors)
markup = parser.RTFToQEL(rtf, fonts, colors)
WScript.Echo markup
Set decoder = CreateObject("QEL.StyleDecoder")
decoder.QELText = markup
For Each run In decoder.Segments
  WScript.Echo run.Text & ": " & run.Style.Bold
Next
