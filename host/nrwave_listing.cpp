#include "host/nrwave_listing.h"

#include "host/nrwave_difference.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_mending.h"
#include "host/nrwave_path.h"
#include "host/nrwave_rows.h"
#include "host/nrwave_single_steps.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

/// Writes façades as steps, beside a fresh waveform that tells which entries have to be added.
class lister_t
{
public:
    std::vector<std::string> steps;

    void facade(const std::string& path, void* facade, void* fresh, const cfg_nr_facade_table_t& table)
    {
        const std::size_t before = steps.size();
        drop_edits(table, facade);
        for (unsigned int i = indexed_values(table, fresh); i < indexed_values(table, facade); ++i)
            steps.push_back(verb_step(*find_row(table.verbs, "add"), path));
        for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
            for (unsigned int i = 0; i < leaf->count(facade); ++i)
                append_steps_to(steps, path, *leaf, facade, i);
        for (const cfg_nr_verb_t& verb : table.verbs)
            if (verb.ends_steps && steps.size() > before)
                steps.push_back(verb_step(verb, path));
        for (const cfg_nr_branch_t& branch : table.branches) {
            const std::string child = below(path, branch.name);
            if (branch.is_list())
                list(child, branch, facade, fresh);
            else
                this->facade(child, branch.enter(facade, 0), branch.enter(fresh, 0), *branch.facade);
        }
    }

    void list(const std::string& path, const cfg_nr_branch_t& branch, void* parent, void* fresh)
    {
        const unsigned int entries = branch.count(parent);
        added_entries(path, branch, entries, fresh);
        if (branch.recalled_twice && entries > 1)
            switched_on(path, branch, parent);
        for (unsigned int place = 0; place < entries; ++place)
            facade(entry(path, branch.first(parent) + place), branch.enter_place(parent, place),
                   branch.enter_place(fresh, 0), *branch.facade);
    }

    /// What is on in a list whose last such entry cannot be switched off comes first, so that no step is corrected.
    void switched_on(const std::string& path, const cfg_nr_branch_t& branch, void* parent)
    {
        const cfg_nr_leaf_t& leaf = *find_row(branch.facade->leaves, branch.recalled_twice);
        for (unsigned int place = 0; place < branch.count(parent); ++place)
            if (leaf.read(branch.enter_place(parent, place)) == "true")
                steps.push_back(
                    setting_step(entry(path, branch.first(parent) + place), leaf, branch.enter_place(parent, place)));
    }

    /// The steps that bring a fresh list to a number of entries.
    void added_entries(const std::string& path, const cfg_nr_branch_t& branch, unsigned int entries, void* fresh)
    {
        if (branch.can_add())
            for (unsigned int i = branch.count(fresh); i < entries; ++i)
                steps.push_back("add " + path);
        if (branch.can_remove())
            for (unsigned int i = branch.count(fresh); i > entries; --i)
                steps.push_back("remove " + entry(path, branch.first(fresh) + i - 1));
    }
};

/// Every setting of a waveform as a step, behind those for the entries of its lists.
std::vector<std::string> all_steps_of(cfg_nr_waveform_t& waveform)
{
    lister_t lister;
    cfg_nr_waveform_t fresh;
    lister.facade({}, &waveform, &fresh, g_cfg_nr_waveform_table);
    return std::move(lister.steps);
}

/// What of these steps a waveform holds otherwise.
std::vector<std::string> lost_in(cfg_nr_waveform_t& waveform, const std::vector<std::string>& steps)
{
    const std::vector<std::string> now = all_steps_of(waveform);
    const std::set<std::string> held(now.begin(), now.end());
    std::vector<std::string> lost;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(lost),
                 [&](const std::string& step) { return held.count(step) == 0; });
    return lost;
}

/// The path that a step sets; empty where the step is a verb.
std::string path_set_by(const std::string& step)
{
    const std::size_t end = step.find_first_of("= ");
    return end == std::string::npos || step[end] == ' ' ? std::string{} : step.substr(0, end);
}

std::string facade_set_by(const std::string& step) { return split_last(path_set_by(step)).first; }

/// The path that a line of the stepper is about.
std::string path_told_by(const std::string& line) { return line.substr(0, line.find(": ")); }

bool took(stepper_t& stepper, const std::string& step)
{
    try {
        stepper.apply(step);
        return true;
    } catch (const failure_t&) {
        return false;
    }
}

bool is_comment(const std::string& step) { return step.front() == '#'; }

void comment_out(std::string& step) { step = "# " + one_line(step); }

/// Makes a listing that can be replayed: a fresh waveform takes each step as it stands and comes to the same state.
class replay_t
{
public:
    explicit replay_t(cfg_nr_waveform_t& waveform) : m_waveform(waveform), m_all(all_steps_of(waveform)) {}

    std::vector<std::string> steps()
    {
        _try();
        if (!m_lost.empty()) {
            std::vector<std::string> facades;
            for (const std::string& step : m_all)
                if (m_brief.insert(facade_set_by(step)).second)
                    facades.push_back(facade_set_by(step));
            _try();
            _write_in_full(facades, m_lost.size());
            _try();
        }
        _leave_out_told();
        if (!m_lost.empty() || !figure_differences(m_waveform, *m_copy).empty()) {
            const std::vector<std::string> steps = mending_steps(m_waveform, *m_copy);
            m_steps.insert(m_steps.end(), steps.begin(), steps.end());
            _leave_out_told();
        }
        std::erase_if(m_lost, [&](const std::string& step) { return !_is_sent(step); });
        if (!m_lost.empty())
            m_steps.emplace_back("# No step brings these back:");
        for (const std::string& step : m_lost)
            m_steps.push_back("# " + one_line(step));
        return std::move(m_steps);
    }

private:
    static constexpr unsigned int k_most_tries = 24;

    /// Writes façades in full again, where no more is lost by that.
    void _write_in_full(const std::vector<std::string>& facades, std::size_t least_lost)
    {
        for (const std::string& facade : facades)
            m_brief.erase(facade);
        _try();
        if (m_lost.size() <= least_lost)
            return;
        m_brief.insert(facades.begin(), facades.end());
        if (facades.size() < 2 || m_tries > k_most_tries)
            return;
        const auto middle = facades.begin() + static_cast<std::ptrdiff_t>(facades.size() / 2);
        _write_in_full({facades.begin(), middle}, least_lost);
        _write_in_full({middle, facades.end()}, least_lost);
    }

    /// Writes the listing on a fresh waveform, leaving out what is corrected, then what is still amiss.
    void _try()
    {
        m_copy.emplace();
        bool corrected = false;
        stepper_t stepper(*m_copy, [&corrected](const std::string&) { corrected = true; });
        ++m_tries;
        m_steps.clear();
        for (const std::string& step : m_all) {
            corrected = false;
            if (_is_needless(step, *m_copy) || !took(stepper, step) || corrected)
                continue;
            m_steps.push_back(step);
        }
        mend_in_rounds(m_waveform, *m_copy, m_steps);
        m_lost = lost_in(*m_copy, m_all);
    }

    /// Whether a step sets something in a direction that its carrier sends.
    bool _is_sent(const std::string& step)
    {
        const std::string path = path_set_by(step);
        const std::size_t end = path.rfind("carrier[", 0) == 0 ? path.find("].") : std::string::npos;
        if (end == std::string::npos)
            return true;
        const target_t carrier = resolve(m_waveform, path.substr(0, end + 1));
        const std::string name = path.substr(end + 2, path.find_first_of("[.", end + 2) - end - 2);
        const cfg_nr_branch_t* branch = find_row(carrier.table->branches, name);
        return !branch || sends(carrier_type_of(carrier.facade, *carrier.table), *branch);
    }

    /// Whether a step changes nothing where even such a step brings neighbours in line.
    bool _is_needless(const std::string& step, cfg_nr_waveform_t& copy) const
    {
        const std::string path = path_set_by(step);
        return !path.empty() && m_brief.count(facade_set_by(step)) != 0 &&
               value_at(copy, path) == step.substr(path.size() + 1);
    }

    /// Leaves out the steps of which a replay would tell that something corrects or resets them.
    void _leave_out_told()
    {
        std::size_t before = 0;
        do {
            before = m_steps.size();
            const std::set<std::string> told = _told_by_a_replay();
            m_steps.erase(std::remove_if(m_steps.begin(), m_steps.end(),
                                         [&](const std::string& step) { return told.count(path_set_by(step)) != 0; }),
                          m_steps.end());
        } while (m_steps.size() < before);
        m_lost = lost_in(*m_copy, m_all);
    }

    /// Replays the listing on the copy; the paths of which that tells something.
    std::set<std::string> _told_by_a_replay()
    {
        m_copy.emplace();
        std::set<std::string> told;
        stepper_t stepper(*m_copy, [&told](const std::string& line) { told.insert(path_told_by(line)); });
        for (const std::string& step : m_steps)
            if (!took(stepper, step) && !path_set_by(step).empty())
                told.insert(path_set_by(step));
        stepper.tell_resets();
        return told;
    }

    cfg_nr_waveform_t& m_waveform;
    std::vector<std::string> m_all;
    std::vector<std::string> m_steps;
    /// What the steps were last tried on, and what that left otherwise.
    std::optional<cfg_nr_waveform_t> m_copy;
    std::vector<std::string> m_lost;
    /// The façades in which only what differs from a fresh waveform is written.
    std::set<std::string> m_brief;
    unsigned int m_tries = 0;
};

/// Makes comments of the steps that a waveform in this state would not take without a line, as another setting fixes
/// what they set.
void comment_out_fixed(cfg_nr_waveform_t& waveform, std::vector<std::string>& steps)
{
    std::set<std::string> fixed;
    std::size_t before = 0;
    do {
        before = fixed.size();
        cfg_nr_waveform_t copy;
        take_over(waveform, copy);
        stepper_t stepper(copy, [&fixed](const std::string& line) { fixed.insert(path_told_by(line)); });
        for (const std::string& step : steps)
            if (const std::string path = path_set_by(step); !path.empty() && fixed.count(path) == 0)
                if (!took(stepper, step))
                    fixed.insert(path);
        stepper.tell_resets();
    } while (fixed.size() > before);
    for (std::string& step : steps)
        if (fixed.count(path_set_by(step)) != 0)
            comment_out(step);
}

/// How many of the settings that steps set hold otherwise.
std::size_t number_lost(cfg_nr_waveform_t& waveform, const std::vector<std::string>& steps)
{
    return static_cast<std::size_t>(std::count_if(steps.begin(), steps.end(), [&](const std::string& step) {
        const std::string path = path_set_by(step);
        return !path.empty() && value_at(waveform, path) != step.substr(path.size() + 1);
    }));
}

/// The last step that leads a waveform away from any of those.
std::string* last_to_lose(cfg_nr_waveform_t& waveform, std::vector<std::string>& steps,
                          const std::vector<std::string>& lost)
{
    std::string* found = nullptr;
    cfg_nr_waveform_t copy;
    take_over(waveform, copy);
    stepper_t stepper(copy, [](const std::string&) {});
    std::size_t before = number_lost(copy, lost);
    for (std::string& step : steps) {
        if (is_comment(step) || !took(stepper, step))
            continue;
        const std::size_t now = number_lost(copy, lost);
        if (now > before)
            found = &step;
        before = now;
    }
    return found;
}

/// A waveform in this state stays as it is with the steps. What they move elsewhere, as the width of a numerology moves
/// the SS/PBCH block, further steps bring back; one that moves what no step brings back becomes a comment.
void bring_back_the_rest(cfg_nr_waveform_t& waveform, std::vector<std::string>& steps)
{
    const std::vector<std::string> all = all_steps_of(waveform);
    for (std::string* moves = nullptr;; comment_out(*moves)) {
        cfg_nr_waveform_t copy;
        take_over(waveform, copy);
        stepper_t stepper(copy, [](const std::string&) {});
        for (const std::string& step : steps)
            if (!is_comment(step))
                took(stepper, step);
        std::vector<std::string> behind;
        mend_in_rounds(waveform, copy, behind);
        const std::vector<std::string> lost = lost_in(copy, all);
        moves = lost.empty() ? nullptr : last_to_lose(waveform, steps, lost);
        if (!moves) {
            steps.insert(steps.end(), behind.begin(), behind.end());
            return;
        }
    }
}

/// A setting, with all its values where it has several and the path names none.
std::vector<std::string> values_at(const std::string& facade, const target_t& target)
{
    std::vector<std::string> steps;
    for (unsigned int i = 0; i < target.leaf->count(target.facade); ++i)
        if (i == target.index.value_or(i))
            steps.push_back(setting_step(facade, *target.leaf, target.facade, i));
    return steps;
}

/// The `add` steps for the entries that a path goes through.
void added_on_the_way(lister_t& lister, cfg_nr_waveform_t& waveform, cfg_nr_waveform_t& fresh, const std::string& path)
{
    for (std::size_t close = path.find(']'); close != std::string::npos; close = path.find(']', close + 1)) {
        const std::string through = path.substr(0, close + 1);
        const target_t target = resolve(waveform, through);
        void* fresh_parent = resolve_first(fresh, through).list_parent;
        const unsigned int entries = *target.index - target.list->first(target.list_parent) + 1;
        lister.added_entries(through.substr(0, through.rfind('[')), *target.list,
                             std::max(entries, target.list->count(fresh_parent)), fresh_parent);
    }
}

} // namespace

std::vector<std::string> steps_of(cfg_nr_waveform_t& waveform) { return replay_t(waveform).steps(); }

std::vector<std::string> steps_at(cfg_nr_waveform_t& waveform, const std::string& path)
{
    lister_t lister;
    cfg_nr_waveform_t fresh;
    const target_t target = resolve(waveform, path);
    if (target.leaf)
        return values_at(split_last(path).first, target);
    if (target.figure)
        return {path + '=' + target.figure->read(target.facade)};

    added_on_the_way(lister, waveform, fresh, path);
    const target_t fresh_target = resolve_first(fresh, path);
    const target_t again = resolve(waveform, path);
    if (again.list && !again.index)
        lister.list(path, *again.list, again.list_parent, fresh_target.list_parent);
    else
        lister.facade(path, again.facade, fresh_target.facade, *again.table);
    comment_out_fixed(waveform, lister.steps);
    bring_back_the_rest(waveform, lister.steps);
    const target_t shown = resolve(waveform, path);
    if (!shown.list || shown.index)
        for (const cfg_nr_figure_t& figure : shown.table->figures)
            lister.steps.push_back("# " + one_line(below(path, figure.name) + '=' + figure.read(shown.facade)));
    return std::move(lister.steps);
}

} // namespace nrwave
