#include "disk_log.h"

#include <algorithm>

namespace {

using Kind = DiskEvent::Kind;

bool IsOfNames(const DiskEvent& event)
{
    return event.kind == Kind::Create || event.kind == Kind::Truncate || event.kind == Kind::Delete;
}

// What a file has grown by without a write reads as zeros.
void Put(std::string* bytes, size_t offset, std::string_view piece)
{
    if (bytes->size() < offset + piece.size())
        bytes->resize(offset + piece.size());
    piece.copy(bytes->data() + offset, piece.size());
}

// The bytes of the file that a step is about; null when it is not on the disk.
std::string* BytesOf(const DiskLog::Step& step, Disk* disk)
{
    const auto found = disk->find(step.file);
    return found != disk->end() && found->second.generation == step.generation ? &found->second.bytes
                                                                               : nullptr;
}

void Apply(const DiskLog::Step& step, Disk* disk)
{
    if (step.kind == Kind::Create)
        (*disk)[step.file] = {"", step.generation};
    else if (step.kind == Kind::Delete)
        disk->erase(step.file);
    else if (std::string* bytes = BytesOf(step, disk); !bytes)
        return;
    else if (step.kind == Kind::Truncate)
        bytes->resize(static_cast<size_t>(step.offset));
    else if (step.kind == Kind::Write)
        Put(bytes, static_cast<size_t>(step.offset), step.bytes);
}

// How a cut of the power treats what was not flushed.
struct Loss {
    explicit Loss(std::mt19937& source) : random(source)
    {
        constexpr unsigned kChances[] = {0, 10, 50, 90, 100};
        sector = Below(2) ? 512 : 4096;
        chance = kChances[Below(5)];
        tears = Below(4) == 0;
    }
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    bool Reaches() { return Below(100) < chance; }

    std::mt19937& random;
    size_t sector;
    unsigned chance; // of a sector, in percent
    bool tears;
};

void ApplySomeSectors(const DiskEvent& event, Loss& loss, std::string* bytes)
{
    const auto start = static_cast<size_t>(event.offset);
    const size_t end = start + event.bytes.size();
    for (size_t at = start; at < end;) {
        const size_t next = std::min(end, (at / loss.sector + 1) * loss.sector);
        size_t length = next - at;
        if (loss.tears && loss.Below(8) == 0)
            length = loss.Below(static_cast<unsigned>(length) + 1);
        if (loss.Reaches())
            Put(bytes, at, std::string_view(event.bytes).substr(at - start, length));
        at = next;
    }
}

} // namespace

void DiskLog::Add(DiskEvent event)
{
    int& generation = m_generations[event.file];
    if (event.kind == Kind::Create)
        ++generation;
    m_steps.push_back({std::move(event), generation});
}

void DiskReplay::Flush(const std::string& file)
{
    const auto reaches = [&](const DiskLog::Step* step) { return IsOfNames(*step) || step->file == file; };
    for (const DiskLog::Step* step : m_pending)
        if (reaches(step))
            Apply(*step, &m_flushed);
    std::erase_if(m_pending, reaches);
}

void DiskReplay::GoTo(size_t steps)
{
    for (; m_next < steps; ++m_next) {
        const DiskLog::Step& step = m_log.Steps()[m_next];
        if (step.kind == Kind::Sync)
            Flush(step.file);
        else
            m_pending.push_back(&step);
    }
}

Disk DiskReplay::LosePower(std::mt19937& random) const
{
    Loss loss(random);
    const auto names = std::count_if(m_pending.begin(), m_pending.end(),
                                     [](const DiskLog::Step* step) { return IsOfNames(*step); });
    auto namesLeft = loss.Below(static_cast<unsigned>(names) + 1);
    Disk disk = m_flushed;
    for (const DiskLog::Step* step : m_pending) {
        if (IsOfNames(*step)) {
            if (namesLeft && namesLeft--)
                Apply(*step, &disk);
        } else if (std::string* bytes = BytesOf(*step, &disk)) {
            ApplySomeSectors(*step, loss, bytes);
        }
    }
    return disk;
}
