#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_common/lib_nr_interlace.h"

#include <algorithm>
#include <iostream>

// The RBs of a PUCCH: interlaces, and how many there are.

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::size_t k_least_interlace = 10;
constexpr std::size_t k_most_interlace = 11;

} // namespace

bool lib_nr_ul_phy_pucch_base_t::_get_interlace_range(unsigned int& first, unsigned int& last) const
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = _bwp();
    const unsigned int bwp_first = bwp.get_rb_offset();
    const unsigned int bwp_last = bwp_first + bwp.get_rb_number() - 1;
    const auto rb_sets = m_carrier->get_numerology_manager(bwp.get_numerology()).get_ul_guard_band().get_rb_set_info();
    if (rb_sets.empty()) {
        first = bwp_first;
        last = bwp_last;
        return true;
    }
    const auto& rb_set = rb_sets.at(static_cast<std::uint16_t>(m_pucch->get_rb_set_index()));
    first = rb_set.first;
    last = rb_set.second;
    if (first >= bwp_first && last <= bwp_last)
        return true;
    std::cerr << "rb_set range = " << first << ":" << last << std::endl;
    std::cerr << "bwp_num range = " << bwp_first << ":" << bwp_last << std::endl;
    std::cerr << "!! error : rb set are outside the scope of BWP !!" << std::endl;
    return _fails("its RB set lies outside its BWP");
}

bool lib_nr_ul_phy_pucch_base_t::_get_interlace_position(std::vector<unsigned short>& out) const
{
    out.clear();
    if (!m_pucch->get_use_interlace_pucch())
        return true;
    unsigned int first = 0;
    unsigned int last = 0;
    if (!_get_interlace_range(first, last))
        return false;
    if (get_interlace_number(_bwp().get_numerology()) == 0) {
        std::cerr << "The number of available RBs is not enough to interleaving" << std::endl;
        return _fails("its spacing has no interlaces");
    }
    const int interlace1 = m_pucch->get_interlace1();
    if (static_cast<int>(m_pucch->get_interlace0()) == interlace1) {
        std::cout << "interlace 0 and interlace 1 conflict" << std::endl;
        return _fails("interlace0 and interlace1 are the same");
    }
    if (!_append_interlace(m_pucch->get_interlace0(), m_pucch->get_pucch_interlace0(), first, last, out))
        return false;
    if (interlace1 < 0)
        return true;
    const bool is_found =
        _append_interlace(static_cast<unsigned int>(interlace1), m_pucch->get_pucch_interlace1(), first, last, out);
    std::vector<unsigned short> ascending = out;
    std::sort(ascending.begin(), ascending.end());
    out = m_rules.pick(lib_nr_deviation_t::interlaces, out, ascending);
    return is_found;
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_number_in_interlace(unsigned int rb) const
{
    return (rb - _bwp().get_rb_offset()) / get_interlace_number(_bwp().get_numerology());
}

bool lib_nr_ul_phy_pucch_base_t::_append_interlace(unsigned int interlace, unsigned int rb_number_setting,
                                                   unsigned int first, unsigned int last,
                                                   std::vector<unsigned short>& out) const
{
    const unsigned int step = get_interlace_number(_bwp().get_numerology());
    const unsigned int start =
        m_rules.pick(lib_nr_deviation_t::interlaces, interlace, (interlace + step - first % step) % step);
    std::size_t count = 0;
    for (unsigned int rb = first + start; rb <= last && count < k_most_interlace; rb += step, ++count)
        out.push_back(static_cast<unsigned short>(rb));
    if (count < k_least_interlace) {
        std::cerr << " Cannot assign 10 RBs for interleaving " << std::endl;
        std::cerr << " The number of available RBs is not enough to interleaving " << std::endl;
        return _fails("an interlace of it has fewer than 10 resource blocks");
    }
    if (rb_number_setting == LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10 && count == k_most_interlace)
        out.pop_back();
    if (rb_number_setting == LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11 && count == k_least_interlace) {
        std::cout << " Cannot assign 11 RBs for interleaving " << std::endl;
        return _fails("an interlace of it has 10 resource blocks, not 11");
    }
    return true;
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_rb_num() const
{
    if (!m_pucch->get_use_interlace_pucch())
        return m_pucch->get_rb_num();
    std::vector<unsigned short> positions;
    if (_get_interlace_position(positions))
        return static_cast<unsigned int>(positions.size());
    std::cerr << "Interleaving condition is not met, interleaving is not enabled" << std::endl;
    return m_pucch->get_rb_num();
}

} // namespace vek::nr_mod_lib
