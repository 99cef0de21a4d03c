#pragma once

#include "com/automation/Adapter.h"
#include "qel/model/StyleDecoder.h"

namespace qel::com {

/// Represents a decoder to a host.
class StyleDecoderObject final : public Adapter<StyleDecoder, IStyleDecoder> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_QELText(BSTR* Result) override {
    return answer(Result, &StyleDecoder::get_QELText);
  }
  STDMETHODIMP put_QELText(BSTR Text) override { return call(&StyleDecoder::put_QELText, Text); }
  STDMETHODIMP SetQELText(BSTR Text, LONG Options) override {
    return call(&StyleDecoder::SetQELText, Text, Options);
  }
  STDMETHODIMP get_Segments(ISegmentCollection** Result) override {
    return answer(Result, &StyleDecoder::get_Segments);
  }
  STDMETHODIMP get_SegmentCount(LONG* Result) override {
    return answer(Result, &StyleDecoder::get_SegmentCount);
  }
  STDMETHODIMP SegmentText(LONG Index, BSTR* Result) override {
    return answer(Result, &StyleDecoder::SegmentText, Index);
  }
  STDMETHODIMP SegmentStyle(LONG Index, IiStyle** Result) override {
    return answer(Result, &StyleDecoder::SegmentStyle, Index);
  }
  STDMETHODIMP IsQELCode(BSTR Text, QELCodeKind Flags, VARIANT_BOOL* Result) override {
    return answer(Result, &StyleDecoder::IsQELCode, Text, Flags);
  }
  STDMETHODIMP GetQELText(LONG Flags, VARIANT_BOOL RemoveLeadingAndTrailingSpaces,
                          VARIANT_BOOL RemoveDoubleSpaces, BSTR* Result) override {
    return answer(Result, &StyleDecoder::GetQELText, Flags, RemoveLeadingAndTrailingSpaces,
                  RemoveDoubleSpaces);
  }
  STDMETHODIMP GetQELTextv6(LONG Flags, VARIANT_BOOL RemoveLeadingAndTrailingSpaces,
                            VARIANT_BOOL RemoveDoubleSpaces, BSTR* Result) override {
    return answer(Result, &StyleDecoder::GetQELTextv6, Flags, RemoveLeadingAndTrailingSpaces,
                  RemoveDoubleSpaces);
  }
  STDMETHODIMP get_QELTextv6(BSTR* Result) override {
    return answer(Result, &StyleDecoder::get_QELTextv6);
  }
  STDMETHODIMP get_QELTextWithoutIgnored(BSTR* Result) override {
    return answer(Result, &StyleDecoder::get_QELTextWithoutIgnored);
  }
  STDMETHODIMP get_Text(BSTR* Result) override { return answer(Result, &StyleDecoder::get_Text); }
  STDMETHODIMP SetCustomCodes(BSTR Codes) override {
    return call(&StyleDecoder::SetCustomCodes, Codes);
  }
  STDMETHODIMP get_TextCustom(BSTR* Result) override {
    return answer(Result, &StyleDecoder::get_TextCustom);
  }
  STDMETHODIMP OnCodes(IiStyle* Style, BSTR Codes, BSTR* Result) override {
    return answer(Result, &StyleDecoder::OnCodes, Style, Codes);
  }
  STDMETHODIMP OffCodes(IiStyle* Style, BSTR Codes, BSTR* Result) override {
    return answer(Result, &StyleDecoder::OffCodes, Style, Codes);
  }
  STDMETHODIMP CustomOffCodes(IiStyle* Style, BSTR Codes, BSTR* Result) override {
    return answer(Result, &StyleDecoder::CustomOffCodes, Style, Codes);
  }
  STDMETHODIMP DivideSegmentsGivenSelStartAndLength(SHORT SelStart, SHORT SelLength) override {
    return call(&StyleDecoder::DivideSegmentsGivenSelStartAndLength, SelStart, SelLength);
  }
  STDMETHODIMP GetSegmentIndexGivenStartAndLength(SHORT SelStart, SHORT SelLength,
                                                  VARIANT* LastIndex, SHORT* Result) override {
    return answer(Result, &StyleDecoder::GetSegmentIndexGivenStartAndLength, SelStart, SelLength,
                  LastIndex);
  }
  STDMETHODIMP GetSegmentGivenStartAndLength(SHORT SelStart, SHORT SelLength,
                                             ISegment** Result) override {
    return answer(Result, &StyleDecoder::GetSegmentGivenStartAndLength, SelStart, SelLength);
  }
  STDMETHODIMP ApplyStyleToText(SHORT SelStart, SHORT SelLength, IiStyle* Style) override {
    return call(&StyleDecoder::ApplyStyleToText, SelStart, SelLength, Style);
  }
  STDMETHODIMP ApplyAttributeToSegmentedText(SHORT SelStart, SHORT SelLength, LONG Attribute,
                                             VARIANT_BOOL Value) override {
    return call(&StyleDecoder::ApplyAttributeToSegmentedText, SelStart, SelLength, Attribute,
                Value);
  }
  STDMETHODIMP get_Words(IWordCollection** Result) override {
    return answer(Result, &StyleDecoder::get_Words);
  }
  STDMETHODIMP get_WordCount(LONG* Result) override {
    return answer(Result, &StyleDecoder::get_WordCount);
  }
  STDMETHODIMP WordText(LONG Index, BSTR* Result) override {
    return answer(Result, &StyleDecoder::WordText, Index);
  }
  STDMETHODIMP WordSegmentCount(LONG Index, LONG* Result) override {
    return answer(Result, &StyleDecoder::WordSegmentCount, Index);
  }
  STDMETHODIMP WordSegment(LONG Index, LONG SegmentNumber, ISegment** Result) override {
    return answer(Result, &StyleDecoder::WordSegment, Index, SegmentNumber);
  }
  STDMETHODIMP WordSegmentIndex(LONG Index, LONG SegmentNumber, LONG* Result) override {
    return answer(Result, &StyleDecoder::WordSegmentIndex, Index, SegmentNumber);
  }
  STDMETHODIMP TrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &StyleDecoder::TrimStr, Text);
  }
  STDMETHODIMP LTrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &StyleDecoder::LTrimStr, Text);
  }
  STDMETHODIMP RTrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &StyleDecoder::RTrimStr, Text);
  }
  STDMETHODIMP RemoveLeadingPunctuation(BSTR Text, BSTR* Result) override {
    return answer(Result, &StyleDecoder::RemoveLeadingPunctuation, Text);
  }
  STDMETHODIMP RemoveTrailingPunctuation(BSTR Text, BSTR* Result) override {
    return answer(Result, &StyleDecoder::RemoveTrailingPunctuation, Text);
  }
  STDMETHODIMP get_Lossless(VARIANT_BOOL* Result) override {
    return answer(Result, &StyleDecoder::get_Lossless);
  }
  STDMETHODIMP put_Lossless(VARIANT_BOOL Value) override {
    return call(&StyleDecoder::put_Lossless, Value);
  }
};

}  // namespace qel::com
