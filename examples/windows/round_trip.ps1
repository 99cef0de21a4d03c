# Markup to RTF, back to markup, and the runs of the text; an argument by reference, an array, an error.
#   powershell -ExecutionPolicy Bypass -File round_trip.ps1
$fonts = New-Object -ComObject QEL.QELIndexFonts
$colors = New-Object -ComObject QEL.QELIndexColors
$parser = New-Object -ComObject QEL.RTFParser
$text = New-Object -ComObject QEL.QELText
$parser.Lossless = $true
$text.Lossless = $true

$rtf = $parser.QELToRTF('Hello /b1world/b0/nl', $fonts, $colors)
$text.QELText = $parser.RTFToQEL($rtf, $fonts, $colors)
$text.QELText
foreach ($run in $text.Segments) { '{0}: {1}' -f $run.Text, $run.Style.Bold }

# By reference: LeftStr puts the number right that it was given.
[object] $length = 20
$left = $text.LeftStr('/b1abc/b0def', [ref] $length)
"$left, $length characters"

foreach ($part in $text.Split('/b1a,b/b0', ',')) { $part }

try {
  $null = $text.MidStr('abc', 70000)
} catch {
  'error {0}: {1}' -f ($_.Exception.GetBaseException().HResult -band 0xFFFF), $_.Exception.GetBaseException().Message
}
