#include "Tools/vistra/DocumentKey.h"

#include "Tools/vistra/PieceReader.h"
#include "Tools/vistra/Record.h"
#include "Utility/src/RecordNames.h"

namespace {

/// Follows the groups of a document, for a host may name its own data like the library's.
class KeySearch {
public:
    void Take(const Record& record) {
        if (record.Type() == RecordType::NewGroup)
            EnterGroup(record);
        else if (record.Type() == RecordType::DataRec && m_keyName &&
                 record.Written(AttributeName::kGroup) == m_group &&
                 record.Value(AttributeName::kName) == m_keyName)
            m_key = record.Value(AttributeName::kData);
    }
    const std::string& Key() const { return m_key; }

private:
    void EnterGroup(const Record& record) {
        const std::string category = record.Value(AttributeName::kCategory),
                          name = record.Value(AttributeName::kName);
        m_keyName = nullptr;
        if (category == RecordNames::kVistraCategory && name == RecordNames::kOptInInfoGroup)
            m_keyName = RecordNames::kOptInKey;
        else if (category == RecordNames::kOptInProductInfo && category == name)
            m_keyName = RecordNames::kOptInUsageKey;
        m_group = record.Written(AttributeName::kGroup);
    }

    const char* m_keyName = nullptr; ///< of the record wanted in this group
    std::string m_group;
    std::string m_key;
};

} // namespace

DocumentKey ReadDocumentKey(const std::string& path) {
    DocumentFile file(path);
    PieceReader reader(file);
    KeySearch search;
    for (Piece piece; reader.Next(piece);)
        if (piece.kind == Piece::Kind::Record)
            search.Take(Record(piece.text));
    return {search.Key(), file.Problem()};
}
