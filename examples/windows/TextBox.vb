' The text box for Windows Forms, with no interop assembly, and the classes without a form. A button
' shows the runs of the text.
'
'   vbc /target:winexe /platform:x64 /optionstrict- TextBox.vb

Imports System
Imports System.Drawing
Imports System.Runtime.InteropServices
Imports System.Windows.Forms
Imports Microsoft.VisualBasic

' The events of the box. Members may be left out, but not renumbered.
<ComImport, Guid("b18fa030-c085-4a81-85e5-4448de0df7b2"), _
 InterfaceType(ComInterfaceType.InterfaceIsIDispatch)> _
Public Interface IQelTextBoxEvents
    <DispId(1)> Sub Change()
    <DispId(-602)> Sub KeyDown(ByRef keyCode As Short, ByRef shift As Short)
End Interface

' The control on a form. Its members work once the form is loaded.
Public Class QelTextBox
    Inherits AxHost

    Private connection As AxHost.ConnectionPointCookie

    Public Event MarkupChanged As EventHandler

    Public Sub New()
        MyBase.New("b18fa04f-c085-4a81-85e5-4448de0df7b2")
    End Sub

    ' The control itself, with all of its members.
    Public ReadOnly Property Box As Object
        Get
            Return GetOcx()
        End Get
    End Property

    Protected Overrides Sub CreateSink()
        connection = New AxHost.ConnectionPointCookie(GetOcx(), New Sink(Me), GetType(IQelTextBoxEvents))
    End Sub

    Protected Overrides Sub DetachSink()
        If connection IsNot Nothing Then connection.Disconnect()
        connection = Nothing
    End Sub

    <ComVisible(True), ClassInterface(ClassInterfaceType.None)> _
    Public Class Sink
        Implements IQelTextBoxEvents

        Private ReadOnly owner As QelTextBox

        Friend Sub New(owner As QelTextBox)
            Me.owner = owner
        End Sub

        Public Sub Change() Implements IQelTextBoxEvents.Change
            owner.RaiseMarkupChanged()
        End Sub

        ' Ctrl+S is the form's own: a key code set to 0 is handled.
        Public Sub KeyDown(ByRef keyCode As Short, ByRef shift As Short) Implements IQelTextBoxEvents.KeyDown
            If keyCode <> Keys.S OrElse shift <> 2 Then Return
            keyCode = 0
            MessageBox.Show(CStr(owner.Box.TextQEL))
        End Sub
    End Class

    Private Sub RaiseMarkupChanged()
        RaiseEvent MarkupChanged(Me, EventArgs.Empty)
    End Sub
End Class

Public Class Letter
    Inherits Form

    Private WithEvents box As New QelTextBox()
    Private WithEvents runs As New Button()
    Private ReadOnly markup As New Label()

    Public Sub New()
        Text = "A letter"
        ClientSize = New Size(460, 240)
        box.Dock = DockStyle.Fill
        runs.Dock = DockStyle.Bottom
        runs.Text = "Runs"
        markup.Dock = DockStyle.Bottom
        markup.UseMnemonic = False
        Controls.Add(box)
        Controls.Add(markup)
        Controls.Add(runs)
    End Sub

    Protected Overrides Sub OnLoad(e As EventArgs)
        MyBase.OnLoad(e)
        box.Box.Lossless = True
        box.Box.Multiline = True
        box.Box.TextQEL = "Dear /b1Anna/b0,"
    End Sub

    Private Sub box_MarkupChanged(sender As Object, e As EventArgs) Handles box.MarkupChanged
        markup.Text = CStr(box.Box.TextQEL)
    End Sub

    Private Sub runs_Click(sender As Object, e As EventArgs) Handles runs.Click
        Dim text As Object = CreateObject("QEL.QELText")
        text.Lossless = True
        text.QELText = box.Box.TextQEL
        Dim shown As String = ""
        For Each run As Object In text.Segments
            shown &= CStr(run.Text) & ": " & CStr(run.Style.Bold) & vbCrLf
        Next
        ' By reference: LeftStr puts the number right that it was given.
        Dim length As Short = 20
        shown &= CStr(text.LeftStr("/b1abc/b0def", length)) & ", " & CStr(length) & vbCrLf
        Try
            text.MidStr("abc", 70000)
        Catch ex As Exception
            shown &= "error " & (Marshal.GetHRForException(ex) And &HFFFF) & ": " & ex.Message
        End Try
        MessageBox.Show(shown)
    End Sub

    <STAThread>
    Public Shared Sub Main()
        Application.EnableVisualStyles()
        Application.Run(New Letter())
    End Sub
End Class
