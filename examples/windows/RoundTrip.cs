// The classes without a form: conversions, an argument by reference, an array, an error. C# 5.
//
//   csc /platform:x64 /reference:Microsoft.CSharp.dll RoundTrip.cs

using System;
using System.Runtime.InteropServices;

public static class RoundTrip
{
    private static dynamic Create(string name)
    {
        return Activator.CreateInstance(Type.GetTypeFromProgID("QEL." + name, true));
    }

    [STAThread]
    public static void Main()
    {
        dynamic parser = Create("RTFParser"), fonts = Create("QELIndexFonts"),
                colors = Create("QELIndexColors"), text = Create("QELText");
        parser.Lossless = true;
        text.Lossless = true;
        string rtf = parser.QELToRTF("Hello /b1world/b0/nl", fonts, colors);
        text.QELText = parser.RTFToQEL(rtf, fonts, colors);
        foreach (dynamic run in text.Segments)
        {
            Console.WriteLine("{0}: {1}", run.Text, run.Style.Bold);
        }

        // By reference: a variable of any type of numbers, or an object that holds one.
        short length = 20;
        string left = text.LeftStr("/b1abc/b0def", ref length);
        Console.WriteLine("{0}, {1} characters", left, length);

        foreach (string part in (object[])text.Split("/b1a,b/b0", ","))
        {
            Console.WriteLine(part);
        }

        // The number is the low word of the HRESULT. The runtime turns some into exceptions of its own.
        try
        {
            text.MidStr("abc", 70000);
        }
        catch (Exception error)
        {
            Console.WriteLine("error {0}: {1}", Marshal.GetHRForException(error) & 0xFFFF, error.Message);
        }
    }
}
