// TS 38.141-1 clause 8.3, what is sent in each performance test of the PUCCH, 14 texts.
#include "config/cfg_nr_pucch_test_model_texts.h"

#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

constexpr const char* k_texts[] = {
    // TS_38_141_831_ACK_MISSED_DETECTION_FOR_PUCCH_FORMAT_0
    "\n"
    "38.141-8.3.1 ACK missed detection for PUCCH format 0\n"
    "- Number of information bits: 1\n"
    "- Number of PRBs: 1\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 13 for 1 symbol; 12 for 2 symbols\n",
    // TS_38_141_8321_NACK_TO_ACK_DETECTION_FOR_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.2.1 NACK to ACK detection for PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of PRBs: 1\n"
    "- Number of Symbols: 14\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code: 0\n",
    // TS_38_141_8322_ACK_MISSED_DETECTION_FOR_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.2.2 ACK missed detection for PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of PRBs: 1\n"
    "- Number of Symbols: 14\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code: 0\n",
    // TS_38_141_8331_ACK_MISSED_DETECTION_FOR_PUCCH_FORMAT_2
    "\n"
    "38.141-8.3.3.1 ACK missed detection for PUCCH format 2\n"
    "- Modulation order: QPSK\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Number of PRBs: 4\n"
    "- Number of Symbols: 1\n"
    "- Number of UCI information bits: 4\n"
    "- First symbol: 13\n"
    "- DM-RS sequence generation: N_ID_0 = 0\n",
    // TS_38_141_8332_UCI_BLER_PERFORMANCE_FOR_PUCCH_FORMAT_2
    "\n"
    "38.141-8.3.3.2 UCI BLER performance for PUCCH format 2\n"
    "- Modulation order: QPSK\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Number of PRBs: 9\n"
    "- Number of Symbols: 2\n"
    "- Number of UCI information bits: 22\n"
    "- First symbol: 12\n"
    "- DM-RS sequence generation: N_ID_0 = 0\n",
    // TS_38_141_834_UCI_BLER_PERFORMANCE_FOR_PUCCH_FORMAT_3
    "\n"
    "38.141-8.3.4 UCI BLER performance for PUCCH format 3\n"
    "- Modulation order: QPSK\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Number of PRBs: 1 for Test1; 3 for Test2\n"
    "- Number of Symbols: 14 for Test1; 4 for Test2\n"
    "- Number of UCI information bits: 16\n"
    "- First symbol: 0\n",
    // TS_38_141_835_UCI_BLER_PERFORMANCE_FOR_PUCCH_FORMAT_4
    "\n"
    "38.141-8.3.5 UCI BLER performance for PUCCH format 4\n"
    "- Modulation order: QPSK\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Number of Symbols: 14\n"
    "- Number of UCI information bits: 22\n"
    "- First symbol: 0\n"
    "- Length of the orthogonal cover code: 2\n"
    "- Index of the orthogonal cover code: 0\n",
    // TS_38_141_83611_NACK_TO_ACK_DETECTION_FOR_MULTI_SLOT_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.6.1.1 NACK to ACK detection for multi-slot PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of PRBs: 1\n"
    "- Number of Symbols: 14\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Disabled\n"
    "- Inter-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code: 0\n"
    "- Number of slots for PUCCH repetition: 2\n",
    // TS_38_141_83612_ACK_MISSED_DETECTION_FOR_MULTI_SLOT_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.6.1.2 ACK missed detection for multi-slot PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of PRBs: 1\n"
    "- Number of Symbols: 14\n"
    "- First PRB prior to frequency hopping: 0\n"
    "- Intra-slot frequency hopping: Disabled\n"
    "- Inter-slot frequency hopping: Enabled\n"
    "- First PRB after frequency hopping: The largest PRB index - (Number of PRBs - 1)\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code: 0\n"
    "- Number of slots for PUCCH repetition: 2\n",
    // TS_38_141_837_ACK_MISSED_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_0
    "\n"
    "38.141-8.3.7 ACK missed detection for interlaced PUCCH format 0\n"
    "- Number of information bits: 1\n"
    "- Number of Symbols: 1\n"
    "- Intra-slot frequency hopping:N/A\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 13\n"
    "- Number of interlaces: 1\n"
    "- Interlace index: 0\n"
    "- NOTE: RBs 0, 10, 20, …, 100 are allocated for 15kHz SCS and RBs 0, 5, 10, …, 50 are allocated for 30kHz SCS.\n",
    // TS_38_141_8381_NACK_TO_ACK_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.8.1 NACK to ACK detection for interlaced PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of Symbols: 14\n"
    "- Intra-slot frequency hopping:N/A\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code (timeDomainOCC): 0\n"
    "- Number of interlaces: 1\n"
    "- Interlace index: 0\n"
    "- NOTE: RBs 0, 10, 20, …, 100 are allocated for 15kHz SCS and RBs 0, 5, 10, …, 50 are allocated for 30kHz SCS.\n",
    // TS_38_141_8382_ACK_MISSED_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_1
    "\n"
    "38.141-8.3.8.2 ACK missed detection for interlaced PUCCH format 1\n"
    "- Number of information bits: 2\n"
    "- Number of Symbols: 14\n"
    "- Intra-slot frequency hopping:N/A\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Initial cyclic shift: 0\n"
    "- First symbol: 0\n"
    "- Index of orthogonal cover code (timeDomainOCC): 0\n"
    "- Number of interlaces: 1\n"
    "- Interlace index: 0\n"
    "- NOTE: RBs 0, 10, 20, …, 100 are allocated for 15kHz SCS and RBs 0, 5, 10, …, 50 are allocated for 30kHz SCS.\n",
    // TS_38_141_839_UCI_BLER_PERFORMANCE_FOR_INTERLACED_PUCCH_FORMAT_2
    "\n"
    "38.141-8.3.9 UCI BLER performance for interlaced PUCCH format 2\n"
    "- Modulation order: QPSK\n"
    "- Intra-slot frequency hopping:N/A\n"
    "- Number of Symbols: 1\n"
    "- Number of information bits: 22\n"
    "- First symbol: 13\n"
    "- DM-RS sequence generation:  N_ID_0=0\n"
    "- Number of interlaces: 1\n"
    "- Interlace index: 0\n"
    "- OCC-length-r16: Not configured\n"
    "- NOTE: RBs 0, 10, 20, …, 100 are allocated for 15kHz SCS and RBs 0, 5, 10, …, 50 are allocated for 30kHz SCS.\n",
    // TS_38_141_8310_ACK_MISSED_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_3
    "\n"
    "38.141-8.3.10 ACK missed detection for interlaced PUCCH format 3\n"
    "- Modulation order: QPSK\n"
    "- Intra-slot frequency hopping:N/A\n"
    "- Group and Sequence hopping: neither\n"
    "- Hopping ID: 0\n"
    "- Number of Symbols: 4\n"
    "- Number of information bits: 4\n"
    "- Index of OCC: Not configured\n"
    "- Length of OCC: Not configured\n"
    "- Cyclic shift index for DMRS: 0\n"
    "- Number of interlaces: 1\n"
    "- Interlace index: 0\n"
    "- NOTE: RBs 0, 10, 20, …, 90 are allocated for 15kHz SCS and RBs 0, 5, 10, …, 45 are allocated for 30kHz SCS.\n",
};

} // namespace

const char* find_pucch_test_model_text(lib_nr_pucch_test_model_t model)
{
    return model < std::size(k_texts) ? k_texts[model] : nullptr;
}

} // namespace vek::nr_mod_lib
