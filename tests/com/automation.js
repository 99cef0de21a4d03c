// What a script gets of every class. A row is an expression and what it gives, or how it fails.

var failures = 0, rows = 0;
function make(name) { return new ActiveXObject("QEL." + name); }
function fail(text) { failures++; WScript.Echo("FAILED: " + text); }
function shown(value) { return typeof value + " " + value; }

var style = make("iStyle"), other = make("iStyle"), segments = make("SegmentCollection"),
    decoder = make("StyleDecoder"), replace = make("cReplaceData"), colors = make("QELIndexColors"),
    fonts = make("QELIndexFonts"), labels = make("QELIndexLabels"), parser = make("RTFParser"),
    engine = make("RTFParser"),
    text = make("QELText"), layout = make("TextAndFormatting"), cases = make("TextCase"),
    list = make("LinkedList"), box = make("QELTextbox");

function each(collection) {
  var texts = [];
  for (var walk = new Enumerator(collection); !walk.atEnd(); walk.moveNext()) texts.push(walk.item().Text);
  return texts.join("|");
}
function repeated(piece, count) {
  for (var all = ""; count > 0; count >>= 1, piece += piece) if (count & 1) all += piece;
  return all;
}
var markup = "/y4x/y0/c1y/c0/nl~/b1";
// Whether an object gives what is wanted: as it is at first, and lossless.
function ways(it, expression, wanted) {
  var first = shown(it.Lossless) + (eval(expression) === wanted);
  it.Lossless = true;
  return first + " " + shown(it.Lossless) + (eval(expression) === wanted);
}
var losslessly = "boolean falsefalse boolean truetrue";

var values = [
  // Records
  ["style.Bold", false], ["style.Size", 8], ["style.Name", "Arial"],
  ["style.Bold = 1; style.FontID = 2; style.ColorID = '4'; style.OnCodes(style)", "/b1/y4/f2"],
  ["style.OffCodes(style)", "/f0/y0/b0"],
  ["style.DifferentOnCodes(other, style) + style.DifferentOffCodes(style, other)", "/f0/y0/b0"],
  ["style.Hidden = true; style.ColorID", 2], ["style.Hidden = false; style.ColorID", 0],
  ["style.StrikeThru = true; style.v6OnCodes(style)", "/b1/f2"],
  ["other.All = style.All; other.All === style.All && other.StrikeThru", true],
  ["style.Size = 10.5; style.Initialize(); style.All",
    "Arial<Font:Rec>8<Font:Rec>False<Font:Rec>False<Font:Rec>False<Font:Rec>False<Font:Rec>False" +
    "<Font:Rec>0<Font:Rec>0<Font:Rec>False<Font:Rec>False<Font:Rec>False"],
  ["replace.DontChangeFont && !replace.Bold", true],
  ["replace.Note = true; replace.All.split('<Repl:Data>').join()",
    "True,True,True,False,False,False,False,False,False,0,3"],
  // Segments
  ["segments.Add('a', style).Text + segments.Count", "a1"],
  ["segments.Add('c', style).Style.Bold", false],
  ["segments.InsertBefore('b', style, 2).Text + segments.InsertAfter('d', style, 3).Text", "bd"],
  ["each(segments)", "a|b|c|d"],
  ["segments.Item(3).Text + segments(2).Text + segments.Item(2)", "cbb"],
  ["segments.Item(2).Text = 'B'; segments.IndexOf(segments(2)) + each(segments)", "2a|B|c|d"],
  ["segments.Item(0) === null && segments.InsertAfter('x', style, 9) === null", true],
  ["segments.Remove(1); segments.Clear(); segments.Count + each(segments)", "0"],
  // Decoder
  ["decoder.QELText = 'one /b1two/b0 three'; decoder.SegmentCount", 3],
  ["decoder.SegmentText(2) + decoder.SegmentStyle(2).Bold + decoder.Text", "twotrueone two three"],
  ["decoder.Words.Count + decoder.Words(3).Text + decoder.WordText(1) + each(decoder.Words)",
    "3threeoneone|two|three"],
  ["decoder.Words.Item(2).Segment(1) === decoder.Segments(2)", true],
  ["decoder.SegmentStyle(2) === decoder.Segments(2).Style", true],
  ["decoder.Segments === decoder.Segments && decoder.Segments(1) !== decoder.Segments(2)", true],
  ["decoder.IsQELCode('/f1') && decoder.IsQELCode('/f1', 3) && !decoder.IsQELCode('/f0', 4)", true],
  ["decoder.SetCustomCodes('/b1=<b>\\t/b0=</b>'); decoder.TextCustom", "one <b>two</b> three"],
  ["decoder.GetQELText(1, false, false)", "one two three"],
  ["decoder + ''", "one /b1two/b0 three"],
  // Tables
  ["colors.Color(2)", 16711680], ["colors.HiddenColor", 16711680], ["colors(3)", 49344],
  ["colors.Color(4) = 0x80000005; colors.Color(4)", 16777215],
  ["colors.Color(10) = 5; colors.Color(10)", 0], ["colors.ColorIndexGivenColor(255)", 5],
  ["colors.LabelName(3) = 'x'; colors.Labels.Name(3) + colors.Labels(3)", "xx"],
  ["colors.Labels === colors.Labels", true], ["colors.ActiveLabelColor", 14602187],
  ["fonts.Font(2) + fonts.DefaultFont + fonts.FontSize", "Courier NewArial10"],
  ["fonts.Font(4) = 'Sans'; fonts.FontIndexGivenFontName('SANS')", 4],
  ["fonts.FontTable().indexOf('{\\\\fonttbl{\\\\f0') === 0", true],
  ["labels.CopyFrom(colors.Labels); labels.Name(3)", "x"], ["labels.Name(0)", ""],
  // Conversions
  ["parser.ConvertNLToSpace", true],
  ["parser.ConvertNLToSpace = false; parser.RecognizeCRLF = true; " +
    "parser.RTFToQEL(parser.QELToRTF('Hello /b1w\u00F6rld/b0/nl\u20AC', fonts, colors), fonts, colors)",
    "Hello /b1w\u00F6rld/b0/nl\u20AC"],
  ["parser.QELToRTFWithoutTables('/b1{')", "\\b1 \\{"],
  ["parser.RTFToText('{\\\\rtf1 a\\\\b b}')", "ab"],
  ["engine.Convert('{\\\\rtf1 a\\\\par b}', 1) + '|' + engine.IsBrokenOff", "a b|false"],
  ["engine.Lossless = true; engine.Convert('/b1w\u00F6/b0 <x>/nl\u20AC', 4)", "<b>w\u00F6</b> &lt;x&gt;<br>\u20AC"],
  ["engine.Convert(engine.ConvertToBytes('/b1w\u00F6/b0/nl\u20AC', 2), 1)", "/b1w\u00F6/b0/nl\u20AC"],
  ["engine.Convert(text.Split('123,92,114,116,102,49,32,228', ','), 3)", "\u00E4"],
  ["engine.Convert('a/nl/f2b/f0', 3) + engine.Convert('/b1', 1, 3)", "a\r\nb~/b1"],
  ["fonts.Font(2) = 'Mono'; engine.Convert('/f2b/f0', 2, 0, fonts, colors).indexOf('Mono') > 0", true],
  ["engine.Convert('{\\\\rtf1 a{\\\\pict 00}{\\\\b b', 1) + engine.Report + engine.Dropped('pictures') + engine.Dropped()" +
    " + engine.IsBrokenOff", "a/b1b/b01 picture11true"],
  ["engine.Convert('a', 5).indexOf('<!DOCTYPE')", 0],
  ["var read; try { read = engine.Convert('<p>a <b>b</b></p>', 1, 4); } catch (error) { read = number_of(error); } " +
    "read === 'a /b1b/b0' || read === 445", true], // or built without HTML
  // Text services
  ["text.LeftStr('/b1abc/b0def', 4)", "/b1abc/b0d"], ["text.MidStr('/b1abc/b0', 2)", "/b1bc/b0"],
  ["text.InString('/b1abc/b0d', 'CD', 1) + text.InStringRev('abab', 'ab')", 6],
  ["text.Stuff('abc', 2, 1, 'X')", "aXc"], ["text.Stuff('abc', 2, 1, 'X', null)", undefined, 13],
  ["new VBArray(text.Split('/b1a,b/b0', ',')).toArray().join('+')", "/b1a/b0+/b1b/b0"],
  ["new VBArray(text.Split('', ',')).ubound()", -1],
  ["text.Compare('/b1a/b0', '/b1a/b0') && !text.Compare('a', '/b1a/b0', 7)", true],
  ["text.QELText = 'abc'; text.ToggleTextAttribute(1, 1, 1); text + ''", "a/b1b/b0c"],
  ["text.StyleDecoderObj.Segments === text.Segments && text.Segments(2) === text.StyleDecoderObj.Segments(2)",
    true],
  ["text.Segments(2).Style.Italic = true; text.QELText", "a/b1/i1b/i0/b0c"],
  ["text.NewStyleDecoderObject() !== text.NewStyleDecoderObject()", true],
  ["text.FontName = 'Sans'; text.FontSize = 9; text.DefaultFont + text.DefaultFontSize", "Sans9"],
  ["text.SetFonts(fonts); text.Fonts(4) + (text.Fonts === text.Fonts)", "Sanstrue"],
  ["replace.DontChangeStyle = false; replace.Bold = true; text.StuffWithStyleData('abc', 2, 1, 'X', replace)",
    "a/b1X/b0c"],
  ["style.Bold = true; text.StuffWithStyleData('abc', 2, 1, 'X', style) + text.Stuff('abc', 2, 1, 'X', style)",
    "a/b1X/b0ca/b1Xc"],
  ["text.IgnoredWordList = 'the'; text.TitleCase('a the cat', 0, -1, true)", "A the Cat"],
  ["layout.fmtMid('/b1abc/b0', 2, 1) + layout.RomanToArabic('XIV')", "b14"],
  ["layout.WordWrap === false || layout.WordWrap === true", true],
  ["cases.UpperCase('/b1ab/b0c', 1, 1) + cases.TextCase + cases.IsAlphabet('Ab')", "/b1aB/b0c0true"],
  ["cases.TextCase = 4; cases.TextCase", 4],
  // The list
  ["list.AddToTop('b'); list.AddToTop(1.5); list.AddToBottom(true); list.AddToBottom(null)", 4],
  ["shown(list.GetData(1)) + shown(list.GetData(2)) + shown(list.GetData(3)) + shown(list.GetData(4))",
    "string bnumber 1.5boolean trueobject null"],
  ["list.AddToBottom(style); list.GetData(5) === style", true],
  ["var own = {n: 7}; list.AddToBottom(own); list.GetData(6) === own && list.GetData(6).n", 7],
  ["list.GotoFirst(); list.DeleteCurrent() + list.Count() + list.ListIndex()", 7],
  ["list.Clear(); list.Count()", 0],
  ["layout.fmtTextWidth('WW') > layout.fmtTextWidth('ii') && layout.Canvas === null", true],
  ["layout.GetLine('one two', 25, 0, 2) + text.LineCount('one two', 25, 0) + text.GetLine('one two', 25, 0, 1)",
    "two2one"],
  ["layout.WriteParagraph('a', 0, 0, 9)", undefined, 91],
  // The control, without a form
  ["box.TextQEL = 'a/b1b/b0'; box.Text + box + box.Fonts.Font(2)", "aba/b1b/b0Courier New"],
  ["box.SelStart = 1; box.SelLength = 1; box.SelBold + box.SelTextQEL", "trueb"],
  ["layout.Canvas = box; layout.Canvas === box && layout.fmtTextWidth('abc') > 0", true],
  ["text.SetCanvas(box); text.LineCount('one two', 10000, 0)", 1],
  ["box.BorderStyle = 0; box.ScrollBars = '3'; box.BorderStyle + 10 * box.ScrollBars", 30],
  ["box.XPTheme = 'pink'", undefined, 13],
  ["box.SelStart = 0; box.SelLength = 2; box.CurrentRichTextBox.SelBold", null],
  // The two ways
  ["ways(make('RTFParser'), 'it.RTFToQEL(it.QELToRTF(markup, fonts, colors), fonts, colors)', markup)", losslessly],
  ["ways(make('StyleDecoder'), 'it.QELText = markup; it.QELText', markup)", losslessly],
  ["ways(make('QELText'), 'it.LeftStr(markup, 2) + it.MidStr(markup, 3)', markup)", losslessly],
  ["ways(make('TextAndFormatting'), 'it.fmtTextWidth(\"<b1]\") === it.fmtTextWidth(\"]b1<\")', true)", losslessly],
  ["box.Multiline = true; ways(box, 'it.TextQEL = markup; it.SelText = \"z\"; it.TextQEL', '/y4z' + markup.slice(3))",
    losslessly],
  // Long texts
  ["text.PlainText(repeated('/b1ab/b0', 500000)).length", 1000000],
  ["parser.QELToRTFWithoutTables(repeated('/i1\\u4E2D', 1000000)).length", 5000000],
  // Failures
  ["labels.Color(2) = labels.Color(5)", undefined, 0x80042AFA],
  ["engine.Convert('a', 99)", undefined, 5], ["engine.Convert('a', 1, 6)", undefined, 5],
  ["engine.Convert(5, 1)", undefined, 13], ["engine.Convert('a', 2, 0, colors)", undefined, 13],
  ["engine.Dropped('birds')", undefined, 5], ["engine.ConvertFile('Z:\\\\none.rtf', 'a.qel')", undefined, 53],
  ["engine.ConvertFile('Z:\\\\none.rtf', 'a.doc')", undefined, 5],
  ["list.GetData(99)", undefined, 9], ["segments.Remove(-1)", undefined, 9],
  ["colors.CopyFrom(fonts)", undefined, 13], ["colors.CopyFrom(null)", undefined, 13],
  ["colors.CopyFrom({})", undefined, 13], ["colors.Color('red')", undefined, 13],
  ["colors.Color(40000)", undefined, 6], ["text.MidStr('abc', 1e300)", undefined, 6],
  ["text.LeftStr('abc', 'x')", undefined, 13], ["text.LeftStr('abc')", undefined, 450],
  ["colors.ColorTable = 'x'", undefined, 438], ["text.FontSize", undefined, 438],
  ["text.Nothing()", undefined, 438], ["layout.Canvas = {}", undefined, 438],
  ["layout.Canvas = {hDC: 'x'}", undefined, 13], ["make('Segment')", undefined, 429]
];

function number_of(error) {
  var full = error.number >>> 0;
  return full >>> 16 === 0x800A ? full & 0xFFFF : full;
}

for (var i = 0; i < values.length; i++) {
  var row = values[i], wanted = row[2] === undefined ? 0 : row[2], number = 0, got = undefined;
  rows++;
  try {
    got = eval(row[0]);
  } catch (error) {
    number = number_of(error);
    if (error.message === "") fail(row[0] + ": no message");
  }
  if (number !== wanted) fail(row[0] + ": error " + number + " instead of " + wanted);
  else if (row[1] !== undefined && got !== row[1]) fail(row[0] + ": " + shown(got));
  if (text.LenStr("/b1ab/b0") !== 2) fail(row[0] + ": the next call fails");
}

WScript.Echo("automation.js: " + rows + " rows, " + failures + " failed");
WScript.Quit(failures);
