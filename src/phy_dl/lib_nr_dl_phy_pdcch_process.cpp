#include "phy_dl/lib_nr_dl_phy_pdcch_process.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_enumerator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_polar_coding.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/lib_nr_sequence_generator.h"

#include <algorithm>
#include <cstddef>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_crc_bits = 24;
constexpr unsigned int k_rnti_bits = 16;
constexpr unsigned int k_least_user_bits = 12;
constexpr unsigned int k_rbs_in_group = 6;
constexpr unsigned int k_dmrs_in_rb = 3;

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

} // namespace

bool lib_nr_dl_phy_pdcch_process_t::set_waveform_config(unsigned int carrier_index, unsigned int /*numerology*/,
                                                        unsigned int dci_index,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(carrier_index);
    const lib_nr_dl_dci_configure_manager_t& dci = carrier.get_dl_dci(dci_index);
    const lib_nr_dl_bwp_configure_manager_t& bwp = carrier.get_dl_bwp(dci.get_bwp_id());
    const lib_nr_dl_coreset_configure_manager_t& coreset = bwp.get_coreset(dci.get_coreset_id());

    set_standard_rules(waveform.get_standard_rules());
    set_pwr_boosting(dci.get_pwr_boosting());
    set_dmrs_pwr_boosting(dci.get_dmrs_pwr_boosting());
    set_scrambling_id(dci.get_scrambling_id());
    set_rnti(dci.get_rnti());
    set_crnti(dci.get_crnti());
    set_ncell_id(carrier.get_cell_index());
    set_search_space_type(dci.get_search_space_type());
    set_start_symbol_within_slot(dci.get_start_symbol_within_slot());
    set_candidates_num(dci.get_candidates_num());
    set_aggregation_level(dci.get_aggregation_level());
    set_allocated_candidate(dci.get_allocated_candidate());
    set_coding(dci.get_coding());
    set_data_block_size(dci.get_data_block_size());
    set_data_source(dci.get_data_source());
    set_data_source_custom(dci.get_data_source_custom());
    set_slot_symbol_number(lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()));
    set_bwp_rb_start(bwp.get_bwp_rb_start());
    set_coreset_id(dci.get_coreset_id());
    set_coreset_rb_offset(coreset.get_rb_offset());
    set_coreset_symbol_number(coreset.get_duration());
    set_fd_resources(coreset.get_fd_resources_for_lib());
    set_cce2reg_mapping_type(coreset.get_cce2reg_mapping_type());
    set_reg_bundle_size(coreset.get_reg_bundle_size());
    set_interleaver_size(coreset.get_interleaver_size());
    set_shift_idx(coreset.get_shift_idx());
    m_pn_seed = std::numeric_limits<unsigned int>::max();
    _forget_failure();
    return true;
}

void lib_nr_dl_phy_pdcch_process_t::set_candidates_num(lib_nr_dl_dci_candidates_number_t number)
{
    m_candidates_num = offered_or_first(number, k_dci_candidates_numbers);
}

void lib_nr_dl_phy_pdcch_process_t::set_aggregation_level(lib_nr_dl_dci_aggregation_level_t level)
{
    m_aggregation_level = offered_or_first(level, k_dci_aggregation_levels);
}

void lib_nr_dl_phy_pdcch_process_t::set_reg_bundle_size(lib_nr_dl_dci_reg_bundle_size_t size)
{
    m_reg_bundle_size = offered_or_first(size, k_dci_reg_bundle_sizes);
}

void lib_nr_dl_phy_pdcch_process_t::set_interleaver_size(lib_nr_dl_dci_interleaver_size_t size)
{
    m_interleaver_size = offered_or_first(size, k_dci_interleaver_sizes);
}

bool lib_nr_dl_phy_pdcch_process_t::pdcch_encode_process(unsigned int slot)
{
    _dl_phy_pdcch_data_generation();
    _explain_stage("payload");
    if (m_explanation && m_coding)
        _explain_coding();
    if (!(m_coding ? _dl_phy_pdcch_coding() : _dl_phy_pdcch_no_coding()))
        return false;
    _dl_phy_pdcch_csrambling();
    _explain_stage("scrambled");
    lib_nr_modulator_t(LIB_NR_MODULATION_QPSK).deal_nr_modulation(m_bits, m_symbols);
    _dci_dmrs_generation(slot);
    const bool is_mapped = dl_phy_pdcch_remap(slot, LIB_NR_REMAPP_MODE_ENCODE_MAP);
    m_symbols.clear();
    if (!is_mapped)
        std::cout << "error!!!pdcch remap fail" << std::endl;
    return is_mapped;
}

// From the data to the symbols

/// A source that is none leaves the data empty.
void lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_data_generation()
{
    if (m_data_source == LIB_NR_USER_CFG) {
        m_bits = m_data_source_custom;
        m_bits.resize(std::max<std::size_t>(m_bits.size(), k_least_user_bits));
        return;
    }
    lib_nr_pn_payload_t payload(m_data_source);
    payload.set_seed(m_pn_seed);
    if (!payload.generate(m_data_block_size, m_bits)) {
        std::cout << "lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_data_generation : Error PN code!" << std::endl;
        m_bits.clear();
    }
    m_pn_seed = payload.get_seed();
}

// TS 38.212 clauses 7.3.2 to 7.3.4
bool lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_coding()
{
    if (!_crc_bit_insert()) {
        std::cout << "pdcch error!!!pdcch crc bit insert fail" << std::endl;
        return _fails("it has no data bits");
    }
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(LIB_NR_CRC_TYPE_24C);
    if (!crc.deal_crc_attachment(m_bits, m_bits) || !_rnti_scrambling()) {
        std::cout << "pdcch error!!!pdcch crc fail" << std::endl;
        return false;
    }
    _explain_stage("crc");
    const auto checked_bits = static_cast<unsigned int>(m_bits.size());
    lib_nr_polar_coding_t polar;
    polar.set_i_il(1);
    polar.set_n_max(9);
    polar.set_n_pc(0);
    polar.set_n_pc_wm(0);
    polar.set_rate_matching_output_length(_get_coded_bits());
    if (!polar.deal_polar_coding(m_bits, m_bits)) {
        std::cout << "pdcch error!!!pdcch polor fail" << std::endl;
        return _fails("its bits and their CRC are more than the polar code takes at its aggregation level");
    }
    lib_nr_polar_rate_match_t rate_match;
    rate_match.set_i_bil(0);
    rate_match.set_polar_coding_input_lentgh(checked_bits);
    if (!rate_match.set_rate_match_output_length(_get_coded_bits()) || !rate_match.deal_rate_matching(m_bits, m_bits)) {
        std::cout << "pdcch error!!!pdcch rate match fail" << std::endl;
        return false;
    }
    _explain_stage("rate_matched");
    return true;
}

void lib_nr_dl_phy_pdcch_process_t::_explain_stage(std::string_view name) const
{
    if (m_explanation)
        m_explanation->add_stage(name, m_bits);
}

void lib_nr_dl_phy_pdcch_process_t::_explain_coding() const
{
    lib_nr_explained_coding_t& coding = m_explanation->coding.emplace();
    coding.tbs = static_cast<unsigned int>(m_bits.size());
    coding.e = {_get_coded_bits()};
    coding.g = _get_coded_bits();
}

/// The ones that the check runs over ahead of the data.
bool lib_nr_dl_phy_pdcch_process_t::_crc_bit_insert()
{
    if (m_bits.empty())
        return false;
    m_bits.insert(m_bits.begin(), k_crc_bits, 1);
    return true;
}

/// Takes these ones off again, and masks the end of the check by the RNTI, most significant bit first.
bool lib_nr_dl_phy_pdcch_process_t::_rnti_scrambling()
{
    if (m_bits.size() < k_crc_bits + k_rnti_bits)
        return false;
    m_bits.erase(m_bits.begin(), m_bits.begin() + k_crc_bits);
    for (unsigned int i = 0; i < k_rnti_bits; ++i)
        m_bits[m_bits.size() - 1 - i] ^= static_cast<unsigned char>(m_rnti >> i & 1u);
    return true;
}

bool lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_no_coding()
{
    if (m_bits.size() > _get_coded_bits()) {
        std::cout << "pdcch error!!!pdcch no coding payload generation fail" << std::endl;
        return _fails("its bits are more than its aggregation level carries");
    }
    m_bits.resize(_get_coded_bits());
    return true;
}

// TS 38.211 clauses 7.3.2.3 and 7.4.1.3.1
unsigned int lib_nr_dl_phy_pdcch_process_t::_get_n_id() const
{
    return m_scrambling_id < 0 ? m_ncell_id : static_cast<unsigned int>(m_scrambling_id);
}

// TS 38.211 clause 7.3.2.3
unsigned int lib_nr_dl_phy_pdcch_process_t::_get_n_rnti() const
{
    return m_scrambling_id >= 0 && m_search_space_type != LIB_NR_DCI_CSS ? m_crnti : 0;
}

void lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_csrambling()
{
    lib_nr_sequence_generator_t::generate_pseudo_random_sequence(_get_c_init(),
                                                                 static_cast<unsigned int>(m_bits.size()), m_sequence);
    for (std::size_t i = 0; i < m_bits.size(); ++i)
        m_bits[i] ^= m_sequence[i];
}

/// In each symbol as many values as its CORESET can ask for.
void lib_nr_dl_phy_pdcch_process_t::_dci_dmrs_generation(unsigned int slot)
{
    const unsigned int end =
        m_bwp_rb_start + static_cast<unsigned int>(m_fd_resources.size()) * k_rbs_in_group + _get_rb_offset();
    const std::size_t length = std::size_t{k_dmrs_in_rb} * (end - _get_dmrs_reference_rb());
    const unsigned int first_symbol = slot * m_slot_symbol_number + m_start_symbol;
    m_dmrs.clear();
    for (unsigned int d = 0; d < m_coreset_symbol_number; ++d) {
        const unsigned int c_init = lib_nr_dmrs_initial_value(first_symbol + d, _get_n_id());
        lib_nr_append_reference_signal(c_init, length, m_dmrs);
        if (m_explanation) {
            m_explanation->dmrs_symbols.push_back(m_start_symbol + d);
            m_explanation->dmrs_c_init.push_back(c_init);
        }
    }
}

/// The RB of the grid that the DMRS sequence counts from, TS 38.211 clause 7.4.1.3.2.
unsigned int lib_nr_dl_phy_pdcch_process_t::_get_dmrs_reference_rb() const
{
    const auto first_group = std::find(m_fd_resources.begin(), m_fd_resources.end(), 1) - m_fd_resources.begin();
    const unsigned int lowest_rb =
        m_bwp_rb_start + _get_rb_offset() + static_cast<unsigned int>(first_group) * k_rbs_in_group;
    return m_rules.pick(lib_nr_deviation_t::dmrs_reference, m_bwp_rb_start, m_coreset_id == 0 ? lowest_rb : 0u);
}

// From the candidate to resource blocks

bool lib_nr_dl_phy_pdcch_process_t::dl_phy_pdcch_remap(unsigned int slot, lib_nr_remap_mode_t mode)
{
    indices_t rbs;
    if (!_choose_rbs(slot, mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP ? m_rnti : _get_n_rnti(), rbs))
        return false;
    switch (mode) {
    case LIB_NR_REMAPP_MODE_UI_VIEW_MAP:
        return _ui_view_remap(slot, rbs);
    case LIB_NR_REMAPP_MODE_ENCODE_MAP:
        return _encode_remap(slot, rbs);
    }
    return false;
}

/// The resource blocks of the candidate, counted from the BWP's first, ascending.
bool lib_nr_dl_phy_pdcch_process_t::_choose_rbs(unsigned int slot, unsigned int n_rnti, indices_t& rbs) const
{
    if (!_deal_dci_para_conflict()) {
        std::cout << "pdcch error!!!_deal_dci_para_conflict fail" << std::endl;
        return false;
    }
    indices_t regs;
    if (!_dci_interleaver(regs, slot, n_rnti)) {
        std::cout << "pdcch error!!!_dci_interleaver fail" << std::endl;
        return false;
    }
    indices_t available_rbs;
    if (!_bwp_coreset_available_reg_calculate(available_rbs)) {
        std::cout << "pdcch error!!!_bwp_coreset_available_reg_calculate fail" << std::endl;
        return false;
    }
    if (!_get_map_reg_index(available_rbs, regs, rbs))
        return false;
    std::sort(rbs.begin(), rbs.end());
    return true;
}

/// A CORESET without resource blocks cannot be sent: a cell marked twice shows it.
bool lib_nr_dl_phy_pdcch_process_t::_deal_dci_para_conflict() const
{
    if (_get_group_number() > 0)
        return true;
    const std::vector<lib_nr_resource_element_index_t> twice(2);
    grid().deal_resource_mapping(twice, LIB_NR_RESOURCE_MAPPING_PDCCH);
    return false;
}

/// The REGs of the candidate's CCEs, TS 38.211 clause 7.3.2.2.
bool lib_nr_dl_phy_pdcch_process_t::_dci_interleaver(indices_t& regs, unsigned int slot, unsigned int n_rnti) const
{
    const indices_t cces = _search_space_calculate(slot, n_rnti);
    if (cces.empty()) {
        std::cout << "pdcch error!!! agregation level exeed available cce." << std::endl;
        return _fails("its aggregation level takes more CCEs than its CORESET has");
    }
    if (m_explanation)
        m_explanation->cces = cces;
    const bool is_interleaved = m_cce2reg_mapping_type != LIB_NR_CORSET_NO_INTERLEAVE;
    const unsigned int bundle_size = is_interleaved ? m_reg_bundle_size : k_regs_in_cce;
    const indices_t bundles = is_interleaved ? _bundle_index_calculate(bundle_size) : indices_t();
    for (const unsigned int cce : cces)
        for (unsigned int i = 0; i < k_regs_in_cce / bundle_size; ++i) {
            const unsigned int x = k_regs_in_cce * cce / bundle_size + i;
            const unsigned int bundle = !is_interleaved ? x : x < bundles.size() ? bundles[x] : 0;
            for (unsigned int reg = 0; reg < bundle_size; ++reg)
                regs.push_back(bundle * bundle_size + reg);
        }
    return true;
}

/// TS 38.213 clause 10.1, without n_CI; empty where the CORESET has too few CCEs.
lib_nr_dl_phy_pdcch_process_t::indices_t
lib_nr_dl_phy_pdcch_process_t::_search_space_calculate(unsigned int slot, unsigned int n_rnti) const
{
    const std::uint64_t cces = std::uint64_t{_get_group_number()} * m_coreset_symbol_number;
    const unsigned int level = m_aggregation_level;
    const unsigned int candidates = m_candidates_num;
    if (cces < level)
        return {};

    const std::uint64_t unmoved = m_allocated_candidate * cces / (std::uint64_t{level} * candidates);
    const auto place_of = [&](std::uint64_t y) {
        constexpr std::uint64_t k_a[] = {39827, 39829, 39839};
        for (unsigned int i = 0; i <= slot; ++i)
            y = y * k_a[m_coreset_id % 3] % 65537;
        return (unmoved + y) % (cces / level);
    };
    const std::uint64_t place =
        m_search_space_type == LIB_NR_DCI_CSS
            ? place_of(0)
            : m_rules.pick(lib_nr_deviation_t::pdcch_hash, place_of(n_rnti), place_of(m_crnti != 0 ? m_crnti : m_rnti));
    indices_t list(level);
    for (unsigned int i = 0; i < level; ++i)
        list[i] = static_cast<unsigned int>(level * place + i);
    return list;
}

/// The bundles by the interleaver f(x) of TS 38.211 clause 7.3.2.2; empty where the CORESET does not fill a row of
/// them.
lib_nr_dl_phy_pdcch_process_t::indices_t
lib_nr_dl_phy_pdcch_process_t::_bundle_index_calculate(unsigned int bundle_size) const
{
    const unsigned int bundle_number = k_regs_in_cce * _get_group_number() * m_coreset_symbol_number / bundle_size;
    const unsigned int rows = m_interleaver_size;
    const unsigned int columns = bundle_number / rows;
    indices_t bundles;
    for (unsigned int c = 0; c < columns; ++c)
        for (unsigned int r = 0; r < rows; ++r)
            bundles.push_back((r * columns + c + m_shift_idx) % bundle_number);
    return bundles;
}

bool lib_nr_dl_phy_pdcch_process_t::_bwp_coreset_available_reg_calculate(indices_t& rbs) const
{
    for (unsigned int group = 0; group < m_fd_resources.size(); ++group)
        if (m_fd_resources[group] == 1)
            for (unsigned int i = 0; i < k_rbs_in_group; ++i)
                rbs.push_back(group * k_rbs_in_group + i);
    if (rbs.size() < k_regs_in_cce * m_aggregation_level / m_coreset_symbol_number) {
        std::cout << "no enough reg for dci" << std::endl;
        return false;
    }
    return true;
}

/// REGs are numbered time first, so those of one resource block stand together. With bundles that are not whole
/// resource blocks, 2 REGs at 3 symbols, every third REG of the list stands for one.
bool lib_nr_dl_phy_pdcch_process_t::_get_map_reg_index(const indices_t& rbs, const indices_t& regs,
                                                       indices_t& out) const
{
    if (rbs.empty() || regs.empty()) {
        std::cout << "pdcch error!!!_get_map_reg_index fail" << std::endl;
        return false;
    }
    for (std::size_t i = 0; i < regs.size(); i += m_coreset_symbol_number)
        out.push_back(rbs[regs[i] / m_coreset_symbol_number] + _get_rb_offset());
    return true;
}

unsigned int lib_nr_dl_phy_pdcch_process_t::_get_group_number() const
{
    return static_cast<unsigned int>(std::count(m_fd_resources.begin(), m_fd_resources.end(), 1));
}

/// -1 aligns the groups with those counted from point A, TS 38.213 clause 10.1.
unsigned int lib_nr_dl_phy_pdcch_process_t::_get_rb_offset() const
{
    if (m_coreset_rb_offset >= 0)
        return static_cast<unsigned int>(m_coreset_rb_offset);
    return (k_rbs_in_group - m_bwp_rb_start % k_rbs_in_group) % k_rbs_in_group;
}

// From resource blocks to cells

/// The one source of the cells, for the view and for the payload: resource blocks side by side in one run, symbol by
/// symbol.
const std::vector<lib_nr_resource_run_t>& lib_nr_dl_phy_pdcch_process_t::_list_runs(unsigned int slot,
                                                                                    const indices_t& rbs)
{
    const unsigned int first_symbol = slot * m_slot_symbol_number + m_start_symbol;
    m_runs.clear();
    for (unsigned int d = 0; d < m_coreset_symbol_number; ++d)
        for (std::size_t i = 0; i < rbs.size(); ++i) {
            if (i > 0 && rbs[i] == rbs[i - 1] + 1)
                m_runs.back().count += k_subcarriers_per_rb;
            else
                m_runs.push_back({first_symbol + d,
                                  static_cast<std::int32_t>((m_bwp_rb_start + rbs[i]) * k_subcarriers_per_rb),
                                  k_subcarriers_per_rb});
        }
    return m_runs;
}

/// TS 38.211 clauses 7.3.2.5 and 7.4.1.3.2: the DMRS takes the subcarriers 1, 5 and 9 of each resource block.
bool lib_nr_dl_phy_pdcch_process_t::_encode_remap(unsigned int slot, const indices_t& rbs)
{
    if (m_symbols.empty())
        return true;
    using math_t = common_lib::lib_common_math_t;
    const double amplitude = math_t::db_value_to_amplitude_ratio(m_pwr_boosting);
    const double dmrs_amplitude = math_t::db_value_to_amplitude_ratio(m_pwr_boosting + m_dmrs_pwr_boosting);
    const unsigned int first_symbol = slot * m_slot_symbol_number + m_start_symbol;
    const std::size_t dmrs_in_symbol = m_dmrs.size() / m_coreset_symbol_number;
    const std::size_t reference_rb = _get_dmrs_reference_rb();
    const std::complex<double>* symbols = m_symbols.data();
    for (const lib_nr_resource_run_t& run : _list_runs(slot, rbs)) {
        const std::size_t rb = static_cast<std::uint32_t>(run.first_subcarrier) / k_subcarriers_per_rb - reference_rb;
        const std::complex<double>* dmrs =
            m_dmrs.data() + (run.symbol - first_symbol) * dmrs_in_symbol + k_dmrs_in_rb * rb;
        m_row.resize(run.count);
        for (std::size_t k = 0; k < run.count; ++k)
            m_row[k] = k % 4 == 1 ? dmrs_amplitude * *dmrs++ : amplitude * *symbols++;
        grid().write_run(run, m_row.data());
        grid().note_part({run.symbol, run.first_subcarrier + 1, run.count / 4, 4}, LIB_NR_CELL_DMRS);
    }
    if (m_explanation)
        _explain(slot);
    return true;
}

/// The first cells are those of the DCI, which stand round the DMRS.
void lib_nr_dl_phy_pdcch_process_t::_explain(unsigned int slot) const
{
    constexpr std::int32_t k_dmrs_subcarrier = 1;
    const unsigned int first_symbol = slot * m_slot_symbol_number;
    const lib_nr_resource_run_t& first = m_runs.front();
    m_explanation->add_runs(m_runs, first_symbol);
    m_explanation->add_cells(
        {{first.symbol, first.first_subcarrier, 1}, {first.symbol, first.first_subcarrier + k_dmrs_subcarrier + 1, 3}},
        first_symbol);
    m_explanation->c_init = {_get_c_init()};
    m_explanation->figures = {{"rnti", m_rnti},
                              {"n_rnti", _get_n_rnti()},
                              {"n_id", _get_n_id()},
                              {"aggregation_level", m_aggregation_level},
                              {"candidate", m_allocated_candidate}};
}

bool lib_nr_dl_phy_pdcch_process_t::_ui_view_remap(unsigned int slot, const indices_t& rbs)
{
    return grid().mark_runs(_list_runs(slot, rbs), LIB_NR_RESOURCE_MAPPING_PDCCH);
}

} // namespace vek::nr_mod_lib
