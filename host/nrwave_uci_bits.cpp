#include "host/nrwave_uci_bits.h"

#include "host/nrwave_path.h"

#include <algorithm>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr unsigned int k_most_repetitions = 8;

/// Makes the bits for a repetition: any setting of the payload does, whether it changes or not.
void make_bits(cfg_nr_ul_pucch_t& pucch, unsigned int repetition)
{
    pucch.set_number_of_slots_for_pucch_repetition(repetition);
    pucch.set_payload_size(pucch.get_payload_size());
}

void mend_entry(const std::string& wanted, cfg_nr_ul_pucch_t& pucch, const std::string& path,
                std::vector<std::string>& steps)
{
    const unsigned int present = pucch.get_number_of_slots_for_pucch_repetition();
    const auto repetition_step = [&](unsigned int repetition) {
        return below(path, "number_of_slots_for_pucch_repetition=") + std::to_string(repetition);
    };
    for (unsigned int earlier = 1; earlier <= k_most_repetitions; ++earlier) {
        make_bits(pucch, earlier);
        if (pucch.get_uci_bits_per_slot() != wanted)
            continue;
        pucch.set_number_of_slots_for_pucch_repetition(present);
        steps.insert(steps.end(),
                     {repetition_step(earlier), below(path, "payload_size=") + std::to_string(pucch.get_payload_size()),
                      repetition_step(present)});
        return;
    }
    make_bits(pucch, present);
}

} // namespace

void mend_uci_bits(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, std::vector<std::string>& steps)
{
    for (unsigned int c = 0; c < std::min(original.get_carrier_number(), copy.get_carrier_number()); ++c) {
        cfg_nr_carrier_t& wanted = *original.get_carrier(c);
        cfg_nr_carrier_t& present = *copy.get_carrier(c);
        if (wanted.get_carrier_type() != LIB_NR_UPLINK)
            continue;
        for (unsigned int i = 0; i < std::min(wanted.get_ul_pucch_number(), present.get_ul_pucch_number()); ++i) {
            const std::string bits = wanted.get_ul_pucch(i)->get_uci_bits_per_slot();
            if (present.get_ul_pucch(i)->get_uci_bits_per_slot() != bits)
                mend_entry(bits, *present.get_ul_pucch(i), entry(below(entry("carrier", c), "ul_pucch"), i), steps);
        }
    }
}

} // namespace nrwave
