' What a script gets that says its types: variables by reference, Nothing, Set, the error object.

Dim failures, rows
failures = 0
rows = 0

Sub Check(what, got, wanted)
  rows = rows + 1
  If VarType(got) <> VarType(wanted) Then
    failures = failures + 1
    WScript.Echo "FAILED: " & what & " is of type " & VarType(got) & " instead of " & VarType(wanted)
  ElseIf got <> wanted Then
    failures = failures + 1
    WScript.Echo "FAILED: " & what & " is " & got & " instead of " & wanted
  End If
End Sub

' What the last statement failed with.
Sub CheckError(what, number, source, description)
  Dim got
  got = Array(Err.Number, Err.Source, Err.Description)
  Err.Clear
  Check what & ": number", CStr(got(0)), CStr(number)
  Check what & ": source", got(1), source
  Check what & ": description", got(2), description
End Sub

Function Make(name)
  Set Make = CreateObject("QEL." & name)
End Function

Class Held
  Private Sub Class_Terminate
    ended = ended + 1
  End Sub
End Class
Dim ended
ended = 0

Dim text, style, colors, labels, list, segment, item, i, n, long_number, real, parts, texts
Set text = Make("QELText")
Set style = Make("iStyle")
Set colors = Make("QELIndexColors")
Set labels = Make("QELIndexLabels")
Set list = Make("LinkedList")

' Types: Boolean, 16 bits, 32 bits, single, text, colour.
Check "Bold", style.Bold, False
style.Bold = True
Check "Bold", style.Bold, True
style.Bold = 5
Check "Bold", style.Bold, True
Check "IsQELCode", text.IsQELCode("/b1"), True
Check "FontID", style.FontID, 0
Check "Size", style.Size, CSng(8)
Check "Count", text.Segments.Count, CLng(0)
Check "Color", colors.Color(2), CLng(16711680)
Check "sum of colours", colors.Color(1) + colors.HiddenColor, CLng(16760832)
Check "text that is not there", text.SegmentText(9), ""
colors.Color(3) = &H80000005
Check "a system colour", colors(3), CLng(16777215)

' Variables by reference: of any type, changed or not; values stand as they are.
n = 9
Check "LeftStr", text.LeftStr("/b1abc/b0", n), "/b1abc/b0"
Check "its length", n, 9
n = 12
text.LeftStr "abc", n
Check "length put right", n, 3
n = -3
text.RightStr "abc", n
Check "length put right", n, 0
long_number = CLng(12)
text.LeftStr "abc", long_number
Check "long number", CStr(long_number), "3"
real = 12.0
text.LeftStr "abc", real
Check "real number", CStr(real), "3"
Check "a value", text.LeftStr("abc", 1 + 1), "ab"
text.QELText = "ab/b1cd/b0ef"
n = Empty
Check "index", text.GetSegmentIndexGivenStartAndLength(1, 4, n), 2
Check "last index", n, 4
Check "segments", text.Segments.Count, CLng(5)

' Objects: default members, Nothing, the same one each time.
Check "default member", "" & text, "ab/b1cd/b0ef"
Check "default member of an item", "" & text.Segments(3), "cd"
labels(2) = "two"
Check "indexed default member", labels.Name(2), "two"
colors.Labels.Name(2) = "three"
Check "its labels", colors.LabelName(2), "three"
Check "Nothing", text.WordSegment(9, 1) Is Nothing, True
Check "same", text.StyleDecoderObj.Segments(1) Is text.Segments.Item(1), True
Check "other", text.Segments(1) Is text.Segments(2), False
Set segment = text.Segments(3)
segment.Style.Underline = True
Set text = Nothing
Check "outlives its text", segment.Text & segment.Style.Bold & segment.Style.Underline, "cdTrueTrue"
Set text = Make("QELText")
text.QELText = "a/b1b/b0c"
texts = ""
For Each item In text.Segments
  texts = texts & item.Text & item.Style.Bold & ";"
Next
Check "For Each", texts, "aFalse;bTrue;cFalse;"
parts = text.Split("/b1a,b/b0,c", ",")
Check "Split", TypeName(parts) & LBound(parts) & UBound(parts) & parts(0) & parts(2), "Variant()02/b1a/b0c"

' The list: every kind of value, and objects for as long as they are in it.
For Each item In Array(Empty, Null, True, CByte(200), 7, CLng(70000), CSng(1.5), 2.25, CCur(1.25), "text", _
                       DateSerial(2001, 2, 3), Array(1, "two"))
  Check "kept value", VarType(list.GetData(list.AddToBottom(item))), VarType(item)
Next
Check "date", list.GetData(11), DateSerial(2001, 2, 3)
Check "currency", list.GetData(9), CCur(1.25)
parts = list.GetData(12)
Check "array", parts(1), "two"
n = 5
list.AddToTop n
n = 6
Check "a copy of the variable", list.GetData(list.First), 5
i = list.AddToBottom(New Held)
Check "held", ended, 0
list.GotoID i
Set item = list.RemoveCurrentLink()
Check "held by the variable", ended, 0
Set item = Nothing
Check "let go", ended, 1
list.AddToTop New Held
list.AddToTop Array(New Held, New Held)
list.AddToTop Nothing
Check "Nothing in the list", list.GetData(list.First) Is Nothing, True
Check "held", ended, 1
list.Clear
Check "cleared", ended, 4
list.AddToTop New Held
Set list = Nothing
Check "ended with the list", ended, 5

' Errors: the component's own ones, and what is refused before it is called.
On Error Resume Next
labels.Color(2) = labels.Color(5)
CheckError "a label colour twice", -2147210502, "QELIndexLabels", _
    "You attempted to set a label color that is being used by one of the other already defined label colors."
colors.CopyFrom Nothing
CheckError "Nothing", 91, "QELIndexColors", "an object is needed, not nothing"
colors.CopyFrom style
CheckError "another class", 13, "QELIndexColors", "CopyFrom: the object is of another class"
colors.CopyFrom "colors"
CheckError "no object", 13, "QELIndexColors", "CopyFrom: an argument is of a type that does not convert"
i = colors.Color(40000)
CheckError "too large", 6, "QELIndexColors", "Color: a number is too large"
style.Bold = "perhaps"
CheckError "no Boolean", 13, "iStyle", "Bold: an argument is of a type that does not convert"
i = text.MidStr("abc")
CheckError "too few", 450, "QELText", "MidStr: the number of arguments is wrong"
colors.ColorTable = "x"
CheckError "read only", 438, "QELIndexColors", "ColorTable: there is no such member, or it cannot be used so"
n = "many"
i = text.LeftStr("abc", n)
CheckError "no number", 13, "QELText", "the value is of a type that does not convert"
Check "variable that is no number", n, "many"
n = 70000
i = text.LeftStr("abc", n)
CheckError "too large", 6, "QELText", "the number is too large"
text.SetCanvas style
CheckError "no canvas", 438, "QELText", "the object has no member hDC"
Check "the next call", text.LenStr("/b1ab/b0"), 2

WScript.Echo "automation.vbs: " & rows & " rows, " & failures & " failed"
WScript.Quit failures
