#include <enchant.h>

#include <QByteArray>
#include <QHash>
#include <memory>
#include <utility>

#include "qel/qt/Speller.h"

namespace qel::qt {
namespace {

/// Where dictionaries come from; it lives as long as any of them.
using Broker = std::shared_ptr<EnchantBroker>;

class Dictionary : public Speller {
 public:
  Dictionary(Broker broker, EnchantDict* dictionary)
      : broker_(std::move(broker)), dictionary_(dictionary) {}
  ~Dictionary() override { enchant_broker_free_dict(broker_.get(), dictionary_); }

  bool is_right(const QString& word) override {
    const QByteArray bytes = word.toUtf8();
    return enchant_dict_check(dictionary_, bytes.constData(), bytes.size()) <= 0;
  }

  QStringList suggestions(const QString& word) override {
    const QByteArray bytes = word.toUtf8();
    std::size_t count = 0;
    char** const words = enchant_dict_suggest(dictionary_, bytes.constData(), bytes.size(), &count);
    QStringList all;
    for (std::size_t i = 0; i < count; ++i) all += QString::fromUtf8(words[i]);
    if (words != nullptr) enchant_dict_free_string_list(dictionary_, words);
    return all;
  }

  void add(const QString& word) override {
    const QByteArray bytes = word.toUtf8();
    enchant_dict_add(dictionary_, bytes.constData(), bytes.size());
  }

  void ignore(const QString& word) override {
    const QByteArray bytes = word.toUtf8();
    enchant_dict_add_to_session(dictionary_, bytes.constData(), bytes.size());
  }

 private:
  Broker broker_;
  EnchantDict* dictionary_;
};

/// The name of the dictionary to take for a language; empty for none.
QByteArray dictionary_of(EnchantBroker& broker, const QByteArray& language) {
  if (language.isEmpty()) return {};
  if (enchant_broker_dict_exists(&broker, language.constData()) != 0) return language;
  struct Search {
    QByteArray prefix;
    QByteArray found;
  } search = {language.left(language.indexOf('_')) + '_', {}};
  enchant_broker_list_dicts(
      &broker,
      [](const char* name, const char*, const char*, const char*, void* data) {
        auto& wanted = *static_cast<Search*>(data);
        const bool is_first = wanted.found.isEmpty() || qstrcmp(name, wanted.found) < 0;
        if (is_first && QByteArray(name).startsWith(wanted.prefix)) wanted.found = name;
      },
      &search);
  return search.found;
}

}  // namespace

std::shared_ptr<Speller> Speller::of_language(const QString& language) {
  static const Broker broker(enchant_broker_init(), enchant_broker_free);
  static QHash<QByteArray, std::shared_ptr<Speller>> loaded;
  const QByteArray name = dictionary_of(*broker, language.toUtf8());
  if (name.isEmpty()) return nullptr;
  std::shared_ptr<Speller>& speller = loaded[name];
  if (speller == nullptr) {
    EnchantDict* const dictionary = enchant_broker_request_dict(broker.get(), name.constData());
    if (dictionary != nullptr) speller = std::make_shared<Dictionary>(broker, dictionary);
  }
  return speller;
}

}  // namespace qel::qt
