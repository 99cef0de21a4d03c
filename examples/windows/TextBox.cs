// The text box for Windows Forms, with no interop assembly: its class, the events that a host hears,
// and a form to try it in. C# 5, for the .NET Framework as well as for .NET 5 and later.
//
//   csc /target:winexe /platform:x64 /reference:Microsoft.CSharp.dll TextBox.cs

using System;
using System.Drawing;
using System.Runtime.InteropServices;
using System.Windows.Forms;

namespace Qel.Forms
{
    /// <summary>The events of the box. Members may be left out, but not renumbered.</summary>
    [ComImport, Guid("b18fa030-c085-4a81-85e5-4448de0df7b2")]
    [InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
    public interface IQelTextBoxEvents
    {
        [DispId(1)]
        void Change();
        [DispId(-602)]
        void KeyDown(ref short keyCode, ref short shift);
        [DispId(-603)]
        void KeyPress(ref short keyAscii);
    }

    /// <summary>A key of the box; code 0 is handled. Shift is 1 Shift, 2 Ctrl, 4 Alt.</summary>
    public class BoxKeyEventArgs : EventArgs
    {
        public short Code;
        public short Shift;
    }

    /// <summary>The control on a form. Its members work once the form is loaded.</summary>
    public class QelTextBox : AxHost
    {
        private ConnectionPointCookie connection;

        public QelTextBox() : base("b18fa04f-c085-4a81-85e5-4448de0df7b2") {}

        public event EventHandler MarkupChanged;
        public event EventHandler<BoxKeyEventArgs> BoxKeyDown;

        /// <summary>The control itself, with all of its members.</summary>
        public dynamic Box
        {
            get { return GetOcx(); }
        }

        public string Markup
        {
            get { return Box.TextQEL; }
            set { Box.TextQEL = value; }
        }

        protected override void CreateSink()
        {
            connection = new ConnectionPointCookie(GetOcx(), new Sink(this), typeof(IQelTextBoxEvents));
        }

        protected override void DetachSink()
        {
            if (connection != null) connection.Disconnect();
            connection = null;
        }

        [ComVisible(true), ClassInterface(ClassInterfaceType.None)]
        public class Sink : IQelTextBoxEvents
        {
            private readonly QelTextBox owner;

            internal Sink(QelTextBox owner)
            {
                this.owner = owner;
            }

            public void Change()
            {
                if (owner.MarkupChanged != null) owner.MarkupChanged(owner, EventArgs.Empty);
            }

            public void KeyDown(ref short keyCode, ref short shift)
            {
                if (owner.BoxKeyDown == null) return;
                var key = new BoxKeyEventArgs { Code = keyCode, Shift = shift };
                owner.BoxKeyDown(owner, key);
                keyCode = key.Code;
                shift = key.Shift;
            }

            public void KeyPress(ref short keyAscii) {}
        }
    }

    public class Letter : Form
    {
        private readonly QelTextBox box = new QelTextBox();
        private readonly Label markup = new Label();

        public Letter()
        {
            Text = "A letter";
            ClientSize = new Size(460, 220);
            box.Dock = DockStyle.Fill;
            markup.Dock = DockStyle.Bottom;
            markup.UseMnemonic = false;
            Controls.Add(box);
            Controls.Add(markup);
        }

        protected override void OnLoad(EventArgs e)
        {
            base.OnLoad(e);
            box.Box.Lossless = true;
            box.Box.Multiline = true;
            box.MarkupChanged += delegate { markup.Text = box.Markup; };
            // Ctrl+S is the form's own.
            box.BoxKeyDown += delegate(object sender, BoxKeyEventArgs key)
            {
                if (key.Code != (short)Keys.S || key.Shift != 2) return;
                key.Code = 0;
                MessageBox.Show(box.Markup);
            };
            box.Markup = "Dear /b1Anna/b0,";
        }

        [STAThread]
        public static void Main()
        {
            Application.EnableVisualStyles();
            Application.Run(new Letter());
        }
    }
}
