#include "mervane/order/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using mervane::kNoPlace;
using mervane::kNoRow;
using mervane::RowOrder;

void ExpectSame(const RowOrder& order, const std::vector<uint32_t>& model)
{
    ASSERT_EQ(order.Count(), model.size());
    for (uint32_t row = 0; row < model.size(); ++row) {
        ASSERT_EQ(order.PlaceAt(row), model[row]) << "row " << row;
        ASSERT_EQ(order.RowOf(model[row]), row);
    }
    EXPECT_EQ(order.PlaceAt(static_cast<uint32_t>(model.size())), kNoPlace);
}

// The order of places by a value each, beside a plain sorted vector.
class Model {
  public:
    explicit Model(uint32_t places) : m_order(Initial(places)) {}

    void Insert(uint32_t place, uint32_t value)
    {
        if (place >= m_values.size())
            m_values.resize(place + 1);
        m_values[place] = value;
        m_order.Insert(place, [&](uint32_t other) { return Before(other, place); });
        m_rows.insert(std::upper_bound(m_rows.begin(), m_rows.end(), place,
                                       [&](uint32_t a, uint32_t b) { return Before(a, b); }),
                      place);
    }
    void Remove(uint32_t place)
    {
        m_order.Remove(place);
        std::erase(m_rows, place);
    }
    const RowOrder& Order() const { return m_order; }
    const std::vector<uint32_t>& Rows() const { return m_rows; }

  private:
    bool Before(uint32_t a, uint32_t b) const
    {
        return m_values[a] != m_values[b] ? m_values[a] < m_values[b] : a < b;
    }
    RowOrder Initial(uint32_t places)
    {
        for (uint32_t place = 0; place < places; ++place) {
            m_values.push_back(place * 10);
            m_rows.push_back(place);
        }
        return RowOrder(m_rows);
    }

    std::vector<uint32_t> m_values;
    std::vector<uint32_t> m_rows;
    RowOrder m_order;
};

TEST(RowOrder, HoldsTheGivenOrder)
{
    std::vector<uint32_t> places(5000);
    for (uint32_t i = 0; i < places.size(); ++i)
        places[i] = (i * 7919) % 5000;
    ExpectSame(RowOrder(places), places);
    EXPECT_EQ(RowOrder(places).RowOf(5000), kNoRow);
    ExpectSame(RowOrder({}), {});
    EXPECT_EQ(RowOrder({}).RowOf(0), kNoRow);
}

TEST(RowOrder, FollowsWhatComesAndGoes)
{
    std::mt19937 random(7);
    for (const uint32_t start : {0u, 1u, 384u, 3000u}) {
        Model model(start);
        uint32_t next = start;
        for (int step = 0; step < 4000; ++step) {
            if (model.Rows().empty() || random() % 5 < 3)
                model.Insert(next++, static_cast<uint32_t>(random()) % 20000);
            else
                model.Remove(model.Rows()[random() % model.Rows().size()]);
        }
        ExpectSame(model.Order(), model.Rows());
        while (!model.Rows().empty())
            model.Remove(model.Rows()[random() % model.Rows().size()]);
        ExpectSame(model.Order(), {});
        model.Insert(next, 5);
        ExpectSame(model.Order(), {next});
    }
}

TEST(RowOrder, TakesManyAtTheSameEnd)
{
    for (const bool atFront : {false, true}) {
        Model model(0);
        for (uint32_t i = 0; i < 3000; ++i)
            model.Insert(i, atFront ? 3000 - i : i);
        ExpectSame(model.Order(), model.Rows());
    }
}

TEST(RowOrder, TellsItsVersionsApart)
{
    Model model(10);
    const uint64_t before = model.Order().Version();
    model.Insert(10, 55);
    const uint64_t inserted = model.Order().Version();
    EXPECT_NE(inserted, before);
    model.Remove(10);
    EXPECT_NE(model.Order().Version(), inserted);
    EXPECT_NE(model.Order().Version(), before);
    const uint64_t removed = model.Order().Version();
    model.Remove(10); // not there any more
    EXPECT_EQ(model.Order().Version(), removed);
}

} // namespace
