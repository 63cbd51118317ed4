#include "manager/lib_nr_dl_coreset_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_setting.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_rb_per_group = 6;
constexpr std::size_t k_most_groups = 45;

std::vector<int> parse_bitmap(const std::string& text, std::size_t groups)
{
    std::vector<unsigned char> bits;
    common_lib::lib_common_list_parse_t::string_to_bit_list(text, bits);
    std::vector<int> bitmap(bits.begin(), bits.end());
    bitmap.resize(groups, 0);
    return bitmap;
}

unsigned int count_ones(const std::vector<int>& bitmap)
{
    return static_cast<unsigned int>(std::count(bitmap.begin(), bitmap.end(), 1));
}

std::string bitmap_text(const std::vector<int>& bitmap)
{
    std::vector<unsigned char> bits;
    for (const int bit : bitmap)
        bits.push_back(bit != 0 ? 1 : 0);
    return common_lib::lib_common_list_parse_t::bit_list_to_string(bits);
}

} // namespace

lib_nr_dl_coreset_configure_manager_t::lib_nr_dl_coreset_configure_manager_t(unsigned int bwp_rb_size, unsigned int id)
    : m_coreset_id(id)
{
    init(bwp_rb_size);
}

void lib_nr_dl_coreset_configure_manager_t::init(unsigned int bwp_rb_size)
{
    m_rb_offset = 0;
    m_duration = 1;
    m_cce2reg_mapping_type = LIB_NR_CORSET_NO_INTERLEAVE;
    m_reg_bundle_size = LIB_NR_DCI_REG_BUNDLE_SIZE_6;
    m_interleaver_size = LIB_NR_DCI_INTERLEAVER_SIZE_2;
    m_shift_idx = 0;
    m_precoder_granularity = REG_BUNDLE_SIZE;
    set_fd_resources(std::string(k_most_groups, '1'), bwp_rb_size);
}

bool lib_nr_dl_coreset_configure_manager_t::set_current_coreset_id(unsigned int id)
{
    return assign(m_coreset_id, std::clamp(id, 1U, 11U));
}

bool lib_nr_dl_coreset_configure_manager_t::set_rb_offset(int rb_offset)
{
    return assign(m_rb_offset, std::clamp(rb_offset, -1, 5));
}

bool lib_nr_dl_coreset_configure_manager_t::set_fd_resources(const std::string& text, unsigned int bwp_rb_size)
{
    const std::size_t groups = bwp_rb_size / k_rb_per_group;
    const std::vector<int> before = m_fd_resources;
    m_bwp_rb_size = bwp_rb_size;
    if (text.empty()) {
        m_fd_resources.clear();
        m_fd_resources_text.clear();
        return m_fd_resources != before;
    }
    m_fd_resources = parse_bitmap(text, groups);
    if (groups > 0 && count_ones(m_fd_resources) == 0)
        m_fd_resources.front() = 1;
    if (m_cce2reg_mapping_type != LIB_NR_CORSET_NO_INTERLEAVE && !_is_fd_resource_valid(m_fd_resources)) {
        // The bitmap before may be that of a wider BWP, and lose all of its groups.
        m_fd_resources = before;
        m_fd_resources.resize(groups, 0);
        if (count_ones(m_fd_resources) == 0 || !_is_fd_resource_valid(m_fd_resources))
            m_fd_resources = _shortest_valid_bitmap(groups);
    }
    m_fd_resources_text = bitmap_text(m_fd_resources);
    return m_fd_resources != before;
}

bool lib_nr_dl_coreset_configure_manager_t::set_duration(unsigned int duration)
{
    const bool changed = assign(m_duration, std::clamp(duration, 1U, 3U));
    _drop_bundle_of_three();
    _apply_bitmap_again();
    return changed;
}

bool lib_nr_dl_coreset_configure_manager_t::set_cce2reg_mapping_type(lib_nr_dl_dci_cce2reg_mapping_type_t type)
{
    const bool changed = assign(m_cce2reg_mapping_type, type);
    _drop_bundle_of_three();
    _apply_bitmap_again();
    return changed;
}

bool lib_nr_dl_coreset_configure_manager_t::set_reg_bundle_size(lib_nr_dl_dci_reg_bundle_size_t size)
{
    const lib_nr_dl_dci_reg_bundle_size_t before = m_reg_bundle_size;
    m_reg_bundle_size = size;
    _drop_bundle_of_three();
    _apply_bitmap_again();
    return m_reg_bundle_size != before;
}

std::vector<lib_nr_dl_dci_reg_bundle_size_t>
lib_nr_dl_coreset_configure_manager_t::get_available_reg_bundle_size() const
{
    if (m_duration == 3)
        return {LIB_NR_DCI_REG_BUNDLE_SIZE_3, LIB_NR_DCI_REG_BUNDLE_SIZE_6};
    return {LIB_NR_DCI_REG_BUNDLE_SIZE_2, LIB_NR_DCI_REG_BUNDLE_SIZE_6};
}

bool lib_nr_dl_coreset_configure_manager_t::set_interleaver_size(lib_nr_dl_dci_interleaver_size_t size)
{
    const bool changed = assign(m_interleaver_size, size);
    _apply_bitmap_again();
    return changed;
}

bool lib_nr_dl_coreset_configure_manager_t::set_shift_idx(unsigned int shift_idx)
{
    return assign(m_shift_idx, std::min(shift_idx, 274U));
}

bool lib_nr_dl_coreset_configure_manager_t::set_precoder_granularity(lib_nr_coreset_precoder_granularity_t granularity)
{
    return assign(m_precoder_granularity, granularity);
}

// TS 38.211 clause 7.3.2.2: the REGs of an interleaved CORESET fill whole rows of bundles.
bool lib_nr_dl_coreset_configure_manager_t::_is_fd_resource_valid(const std::vector<int>& bitmap) const
{
    return count_ones(bitmap) * k_rb_per_group % (_get_reg_bundle_size() * _get_interleaver_size()) == 0;
}

std::vector<int> lib_nr_dl_coreset_configure_manager_t::_shortest_valid_bitmap(std::size_t groups) const
{
    const unsigned int rbs = _lcm(_get_reg_bundle_size() * _get_interleaver_size(), k_rb_per_group);
    std::vector<int> bitmap(rbs / k_rb_per_group, 1);
    bitmap.resize(groups, 0);
    return bitmap;
}

unsigned int lib_nr_dl_coreset_configure_manager_t::_get_reg_bundle_size() const
{
    const lib_nr_dl_dci_reg_bundle_size_t size = offered_or_first(m_reg_bundle_size, k_dci_reg_bundle_sizes);
    if (size != m_reg_bundle_size)
        std::cout << "lib_nr_dl_coreset_configure_manager_t::_is_fd_resource_valid : Error reg_bundle_size!"
                  << std::endl;
    return size;
}

unsigned int lib_nr_dl_coreset_configure_manager_t::_get_interleaver_size() const
{
    const lib_nr_dl_dci_interleaver_size_t size = offered_or_first(m_interleaver_size, k_dci_interleaver_sizes);
    if (size != m_interleaver_size)
        std::cout << "lib_nr_dl_coreset_configure_manager_t::_is_fd_resource_valid : Error interleaver_size!"
                  << std::endl;
    return size;
}

void lib_nr_dl_coreset_configure_manager_t::_drop_bundle_of_three()
{
    if (m_reg_bundle_size == LIB_NR_DCI_REG_BUNDLE_SIZE_3 && m_duration != 3)
        m_reg_bundle_size = LIB_NR_DCI_REG_BUNDLE_SIZE_2;
}

void lib_nr_dl_coreset_configure_manager_t::_apply_bitmap_again()
{
    set_fd_resources(std::string(m_fd_resources_text), m_bwp_rb_size);
}

unsigned int lib_nr_dl_coreset_configure_manager_t::_gcd(unsigned int a, unsigned int b)
{
    while (b != 0) {
        const unsigned int rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

unsigned int lib_nr_dl_coreset_configure_manager_t::_lcm(unsigned int a, unsigned int b) { return a / _gcd(a, b) * b; }

} // namespace vek::nr_mod_lib
