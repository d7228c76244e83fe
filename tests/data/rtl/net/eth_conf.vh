`define CRC_POLY 32'h04C11DB7
`define LANES 2
