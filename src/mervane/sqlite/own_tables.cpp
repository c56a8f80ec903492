#include "mervane/sqlite/own_tables.h"

#include <algorithm>

#include "mervane/sqlite/schema_steps.h"

namespace mervane {

namespace {

bool IsSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// Takes what stands before a mark, and the mark.
std::string_view TakeUntil(std::string_view mark, std::string_view* text)
{
    const std::string_view taken = text->substr(0, text->find(mark));
    text->remove_prefix(std::min(taken.size() + mark.size(), text->size()));
    return taken;
}

bool TakeWords(std::string_view words, std::string_view* text)
{
    const bool isThere = text->starts_with(words);
    if (isThere)
        text->remove_prefix(words.size());
    return isThere;
}

auto Named(std::string_view name, auto& tables)
{
    return std::ranges::find(tables, name, &OwnTable::name);
}

void AddStatement(std::string_view line, std::vector<OwnTable>* tables)
{
    const std::string_view all = line;
    if (TakeWords("CREATE TABLE ", &line)) {
        tables->push_back(
            {std::string(TakeUntil("(", &line)), std::string(all.substr(0, all.size() - 1)), {}});
    } else if (TakeWords("ALTER TABLE ", &line)) {
        const auto table = Named(TakeUntil(" ADD COLUMN ", &line), *tables);
        table->added.emplace_back(line);
    }
}

} // namespace

std::string OwnTable::Sql() const
{
    std::string sql = created;
    for (const std::string& column : added)
        sql += ", " + column;
    return sql;
}

std::vector<OwnTable> OwnTablesOf(int64_t version)
{
    std::vector<OwnTable> tables;
    for (int64_t step = 0; step < std::min(version, kSchemaVersion); ++step)
        for (std::string_view text = kSchemaSteps[step]; !text.empty();)
            AddStatement(InOneLine(TakeUntil(";", &text)), &tables);
    return tables;
}

std::string ViewAsNewest(const OwnTable& table, const std::vector<OwnTable>& newest)
{
    const auto now = Named(table.name, newest);
    std::string absent;
    for (size_t i = table.added.size(); i < now->added.size(); ++i)
        absent += ", NULL AS " + now->added[i].substr(0, now->added[i].find(' '));
    if (absent.empty())
        return {};
    return "CREATE TEMP VIEW " + table.name + " AS SELECT *" + absent + " FROM main." + table.name;
}

std::string InOneLine(std::string_view sql)
{
    std::string line;
    for (const char character : sql) {
        if (!IsSpace(character)) {
            if ((character == ',' || character == ')') && line.ends_with(' '))
                line.pop_back();
            line += character;
        } else if (!line.empty() && !line.ends_with(' ')) {
            line += ' ';
        }
    }
    return line;
}

} // namespace mervane
