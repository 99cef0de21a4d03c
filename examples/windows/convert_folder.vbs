' Converts the texts of a folder into another format, and says what that drops. Run by cscript, once the component is
' registered: cscript convert_folder.vbs FOLDER TARGET html
Set files = CreateObject("Scripting.FileSystemObject")
Set parser = CreateObject("QEL.RTFParser")
parser.Lossless = True
target = WScript.Arguments(1)
If Not files.FolderExists(target) Then files.CreateFolder target
failures = 0
For Each file In files.GetFolder(WScript.Arguments(0)).Files
  If InStr(" qel rtf txt html htm ", " " & LCase(files.GetExtensionName(file.Path)) & " ") > 0 Then
    On Error Resume Next
    parser.ConvertFile file.Path, files.BuildPath(target, file.Name & "." & WScript.Arguments(2))
    If Err.Number <> 0 Then
      WScript.Echo file.Name & ": " & Err.Description
      failures = failures + 1
    ElseIf parser.Report = "" Then
      WScript.Echo file.Name & ": nothing dropped"
    Else
      WScript.Echo file.Name & ": " & parser.Report & " dropped"
    End If
    On Error GoTo 0
  End If
Next
WScript.Quit failures
