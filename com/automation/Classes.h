#pragma once

#include <qelcom.h>

#include <type_traits>

#include "qel/control/QELTextbox.h"
#include "qel/model/cReplaceData.h"
#include "qel/platform/DragData.h"
#include "qel/text/LinkedList.h"
#include "qel/text/QELText.h"

/// The classes of the component.
namespace qel::com {

class DragDataObject;
class LinkedListObject;
class QELIndexColorsObject;
class QELIndexFontsObject;
class QELIndexLabelsObject;
class QELTextObject;
class QELTextboxObject;
class RTFParserObject;
class RichTextBoxObject;
class SegmentCollectionObject;
class SegmentObject;
class StyleDecoderObject;
class TextAndFormattingObject;
class TextCaseObject;
class WordCollectionObject;
class WordObject;
class cReplaceDataObject;
class iStyleObject;

/// Who may create objects of a class: hosts, or only the component, which hands them out.
enum class Made { by_host, by_us };

/// A class of the library, the dual interface and the adapter that represent it to a host, and its
/// entry in the type library.
template <class LibraryClass, class DualInterface, class StandIn, class Coclass, Made made>
struct Row {
  using Class = LibraryClass;
  using Interface = DualInterface;
  using Adapter = StandIn;
  static constexpr bool is_creatable = made == Made::by_host;
  static const CLSID& id() { return __uuidof(Coclass); }
};

template <class... Rows>
struct Table {};

using Classes = Table<
    Row<iStyle, IiStyle, iStyleObject, ::iStyle, Made::by_host>,
    Row<Segment, ISegment, SegmentObject, ::Segment, Made::by_us>,
    Row<SegmentCollection, ISegmentCollection, SegmentCollectionObject, ::SegmentCollection,
        Made::by_host>,
    Row<StyleDecoder, IStyleDecoder, StyleDecoderObject, ::StyleDecoder, Made::by_host>,
    Row<Word, IWord, WordObject, ::Word, Made::by_us>,
    Row<WordCollection, IWordCollection, WordCollectionObject, ::WordCollection, Made::by_us>,
    Row<cReplaceData, IcReplaceData, cReplaceDataObject, ::cReplaceData, Made::by_host>,
    Row<QELIndexColors, IQELIndexColors, QELIndexColorsObject, ::QELIndexColors, Made::by_host>,
    Row<QELIndexFonts, IQELIndexFonts, QELIndexFontsObject, ::QELIndexFonts, Made::by_host>,
    Row<QELIndexLabels, IQELIndexLabels, QELIndexLabelsObject, ::QELIndexLabels, Made::by_host>,
    Row<RTFParser, IRTFParser, RTFParserObject, ::RTFParser, Made::by_host>,
    Row<QELText, IQELText, QELTextObject, ::QELText, Made::by_host>,
    Row<TextAndFormatting, ITextAndFormatting, TextAndFormattingObject, ::TextAndFormatting,
        Made::by_host>,
    Row<TextCase, ITextCase, TextCaseObject, ::TextCase, Made::by_host>,
    Row<LinkedList, ILinkedList, LinkedListObject, ::LinkedList, Made::by_host>,
    Row<QELTextbox, IQELTextbox, QELTextboxObject, ::QELTextbox, Made::by_host>,
    Row<platform::RichEdit, IRichTextBox, RichTextBoxObject, ::RichTextBox, Made::by_us>,
    Row<platform::DragData, IDragData, DragDataObject, ::DragData, Made::by_us>>;

template <class Wanted, class Rows>
struct RowWith : std::type_identity<void> {};
template <class Wanted, class First, class... Rest>
struct RowWith<Wanted, Table<First, Rest...>>
    : std::conditional_t<std::is_same_v<Wanted, typename First::Class> ||
                             std::is_same_v<Wanted, typename First::Interface>,
                         std::type_identity<First>, RowWith<Wanted, Table<Rest...>>> {};

/// The row of a class of the library, or of a dual interface; void when there is none.
template <class ClassOrInterface>
using Described = typename RowWith<ClassOrInterface, Classes>::type;

template <class Interface>
concept OwnInterface = !std::is_void_v<Described<Interface>>;

}  // namespace qel::com
